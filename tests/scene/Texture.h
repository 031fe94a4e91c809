// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace quelto {

/// A square picture that repeats without a seam: coarse shapes, fine grain and colour, so that an encoder has about as
/// much to do with it as with a game. The same at every run.
///
/// Units: Size × Size pixels of 0x00RRGGBB, row by row.
struct Texture {
    static constexpr int Size = 512;
    static std::vector<std::uint32_t> make();
};

} // namespace quelto
