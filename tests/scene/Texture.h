// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace quelto {

/// A square picture that tiles without seams. Its shapes, grain and colours make it about as hard to encode as a game.
/// It is the same in every run.
///
/// Units: Size × Size pixels of 0x00RRGGBB, row by row.
struct Texture {
    static constexpr int Size = 512;
    static std::vector<std::uint32_t> make();
};

} // namespace quelto
