// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/scene/SceneOptions.h"

#include <cstdint>
#include <vector>

namespace quelto {

/// Draws the frames of the scene into memory.
///
/// Units: pixels of 0x00RRGGBB, row by row without gaps.
class ScenePicture {
public:
    ScenePicture(SceneMotion motion, int width, int height);

    int width() const noexcept { return m_width; }
    int height() const noexcept { return m_height; }
    /// Draws every pixel. `pixels` has room for width × height.
    void draw(std::uint32_t* pixels, std::uint64_t frame, bool isFlashing) const;

private:
    struct Area {
        int left = 0;
        int top = 0;
        int width = 0;
        int height = 0;
    };
    struct Shift {
        int x = 0;
        int y = 0;
    };

    void copyBackground(std::uint32_t* pixels, const Area& area, const Shift& shift) const;
    void fill(std::uint32_t* pixels, const Area& area, std::uint32_t colour) const;

    SceneMotion m_motion;
    int m_width;
    int m_height;
    /// Tiles in a row that is one tile wider than the picture, so that each shift needs a single copy of a row.
    std::vector<std::uint32_t> m_background;
};

} // namespace quelto
