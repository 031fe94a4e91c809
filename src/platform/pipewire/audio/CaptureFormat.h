// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto::pipewire {

/// Units: frames per second. All that is captured has this rate; the server converts.
constexpr int CaptureRate = 48000;

} // namespace quelto::pipewire
