// SPDX-License-Identifier: GPL-3.0-or-later
// Gives the precompiled header a target to be built in.
