// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace quelto {

/// Frames a second of everything that is mixed.
constexpr int GridRate = 48000;
constexpr std::size_t GridChannels = 2;

} // namespace quelto
