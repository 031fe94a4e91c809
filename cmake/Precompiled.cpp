// SPDX-License-Identifier: GPL-3.0-or-later
// A target needs a source file to build the precompiled header.
