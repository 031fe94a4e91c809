// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// The frame rate of an aspect export: that of the source as a whole number from 24 to 60, or 30 if it is unknown (0).
/// Units: frames per second.
int renderFrameRate(double sourceRate);

} // namespace quelto
