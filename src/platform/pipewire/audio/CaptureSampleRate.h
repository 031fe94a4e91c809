// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto::pipewire {

/// The rate of all captured audio; the server resamples. Units: frames per second.
constexpr int CaptureSampleRate = 48000;

} // namespace quelto::pipewire
