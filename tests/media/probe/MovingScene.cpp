// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/MovingScene.h"

#include <cmath>

namespace quelto::test {

namespace {

constexpr std::size_t TextureSide = 512;
constexpr int BlackLuma = 16;
constexpr int WhiteLuma = 235;

} // namespace

MovingScene::MovingScene(QSize size)
    : m_size(size)
    , m_texture(TextureSide * TextureSide)
{
    for (std::size_t y = 0; y < TextureSide; ++y) {
        for (std::size_t x = 0; x < TextureSide; ++x) {
            const auto wave = 50 * std::sin(static_cast<double>(x) * 0.049) * std::cos(static_cast<double>(y) * 0.037) +
                30 * std::sin(static_cast<double>(x + y) * 0.19);
            const auto grain = static_cast<double>(m_random() % 24);
            m_texture[y * TextureSide + x] =
                static_cast<std::uint8_t>(std::clamp(110 + wave + grain, double{BlackLuma}, double{WhiteLuma}));
        }
    }
}

void MovingScene::paint(VideoFrame& frame, int index)
{
    for (int y = 0; y < m_size.height(); ++y) {
        auto* row = frame.luma + static_cast<std::ptrdiff_t>(frame.stride) * y;
        // Three bands that move at different speeds.
        const auto speed = 1 + 3 * (3 * y / m_size.height());
        const auto* from = &m_texture[static_cast<std::size_t>(y + index) % TextureSide * TextureSide];
        for (int x = 0; x < m_size.width(); ++x) {
            row[x] = from[static_cast<unsigned>(x + speed * index) % TextureSide];
        }
    }
    for (int y = 0; y < m_size.height() / 2; ++y) {
        auto* row = frame.chroma + static_cast<std::ptrdiff_t>(frame.stride) * y;
        for (int x = 0; x < m_size.width(); ++x) {
            row[x] = static_cast<std::uint8_t>(128 + (static_cast<unsigned>(x / 2 + y + index) / 32) % 8 * 4);
        }
    }
}

} // namespace quelto::test
