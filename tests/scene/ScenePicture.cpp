// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/ScenePicture.h"

#include "tests/scene/CounterStrip.h"
#include "tests/scene/Texture.h"

#include <algorithm>
#include <cstddef>

namespace quelto {

ScenePicture::ScenePicture(SceneMotion motion, int width, int height)
    : m_motion(motion)
    , m_width(width)
    , m_height(height)
{
    const std::vector<std::uint32_t> tile = Texture::make();
    const int rowLength = width + Texture::Size;
    m_background.reserve(static_cast<std::size_t>(rowLength) * Texture::Size);
    for (int row = 0; row < Texture::Size; ++row) {
        for (int column = 0; column < rowLength; ++column)
            m_background.push_back(tile[static_cast<std::size_t>(row * Texture::Size + column % Texture::Size)]);
    }
}

void ScenePicture::copyBackground(std::uint32_t* pixels, const Area& area, const Shift& shift) const
{
    const std::ptrdiff_t rowLength = m_width + Texture::Size;
    for (int row = 0; row < area.height; ++row) {
        const int y = area.top + row;
        const auto source =
            m_background.begin() + (y + shift.y) % Texture::Size * rowLength + shift.x % Texture::Size + area.left;
        std::copy_n(source, area.width, pixels + std::ptrdiff_t{y} * m_width + area.left);
    }
}

void ScenePicture::fill(std::uint32_t* pixels, const Area& area, std::uint32_t colour) const
{
    for (int row = 0; row < area.height; ++row)
        std::fill_n(pixels + std::ptrdiff_t{area.top + row} * m_width + area.left, area.width, colour);
}

void ScenePicture::draw(std::uint32_t* pixels, std::uint64_t frame, bool isFlashing) const
{
    constexpr std::uint32_t Black = 0x000000;
    constexpr std::uint32_t White = 0xffffff;
    // A few bits of the counter are enough for a shift that repeats.
    const int step = static_cast<int>(frame % (2 * Texture::Size));
    const Area everything{.width = m_width, .height = m_height};
    if (m_motion == SceneMotion::High) {
        copyBackground(pixels, everything, {.x = step * 6, .y = step * 3});
    } else {
        copyBackground(pixels, everything, {});
        // A sixteenth of the picture moves, in the lower left.
        const Area corner{.top = m_height - m_height / 4, .width = m_width / 4, .height = m_height / 4};
        copyBackground(pixels, corner, {.x = step * 6, .y = step * 3});
    }
    if (isFlashing) {
        const Area flash{.left = m_width / 4, .top = m_height / 4, .width = m_width / 2, .height = m_height / 2};
        fill(pixels, flash, White);
    }
    const int stripHeight = CounterStrip::height(m_height);
    for (const CounterStrip::Cell& cell : CounterStrip::cells(frame, m_width)) {
        const Area area{.left = cell.left, .width = cell.width, .height = stripHeight};
        fill(pixels, area, cell.isWhite ? White : Black);
    }
}

} // namespace quelto
