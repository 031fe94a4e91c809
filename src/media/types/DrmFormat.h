// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// Pixel formats of pictures in memory of the graphics card, by the codes of drm_fourcc.h. Their names count the
/// channels from the highest byte down.
namespace quelto::drm {

constexpr std::uint32_t fourcc(char first, char second, char third, char fourth)
{
    const auto byte = [](char character) { return static_cast<std::uint32_t>(static_cast<unsigned char>(character)); };
    return byte(first) | byte(second) << 8 | byte(third) << 16 | byte(fourth) << 24;
}

inline constexpr std::uint32_t Xrgb8888 = fourcc('X', 'R', '2', '4');
inline constexpr std::uint32_t Argb8888 = fourcc('A', 'R', '2', '4');
inline constexpr std::uint32_t Xbgr8888 = fourcc('X', 'B', '2', '4');
inline constexpr std::uint32_t Abgr8888 = fourcc('A', 'B', '2', '4');

} // namespace quelto::drm
