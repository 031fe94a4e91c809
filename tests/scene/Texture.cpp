// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/Texture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace quelto {

namespace {

/// Smooth noise in 0…1 with `cells` random values per side.
class NoiseLayer {
public:
    NoiseLayer(int cells, std::mt19937& random)
        : m_cells(cells)
        , m_values(static_cast<std::size_t>(cells) * static_cast<std::size_t>(cells))
    {
        std::uniform_real_distribution<float> value(0.0F, 1.0F);
        std::generate(m_values.begin(), m_values.end(), [&] { return value(random); });
    }

    float at(int x, int y) const
    {
        const float column = static_cast<float>(x * m_cells) / Texture::Size;
        const float row = static_cast<float>(y * m_cells) / Texture::Size;
        const int left = static_cast<int>(column);
        const int top = static_cast<int>(row);
        const float across = smooth(column - static_cast<float>(left));
        const float down = smooth(row - static_cast<float>(top));
        return std::lerp(std::lerp(cell(left, top), cell(left + 1, top), across),
                         std::lerp(cell(left, top + 1), cell(left + 1, top + 1), across), down);
    }

private:
    static float smooth(float t) { return t * t * (3.0F - 2.0F * t); }

    float cell(int column, int row) const
    {
        const auto side = static_cast<std::size_t>(m_cells);
        return m_values[static_cast<std::size_t>(row) % side * side + static_cast<std::size_t>(column) % side];
    }

    int m_cells;
    std::vector<float> m_values;
};

class Channel {
public:
    explicit Channel(std::mt19937& random)
        : m_layers{NoiseLayer{4, random}, NoiseLayer{16, random}, NoiseLayer{64, random}, NoiseLayer{256, random}}
    {
    }

    std::uint32_t at(int x, int y) const
    {
        constexpr std::array Weights{0.4F, 0.3F, 0.2F, 0.1F};
        float sum = 0;
        for (std::size_t layer = 0; layer < m_layers.size(); ++layer)
            sum += Weights[layer] * m_layers[layer].at(x, y);
        // Dark enough for the white flash to be visible everywhere.
        return static_cast<std::uint32_t>(10.0F + 150.0F * sum);
    }

private:
    std::array<NoiseLayer, 4> m_layers;
};

} // namespace

std::vector<std::uint32_t> Texture::make()
{
    std::mt19937 random(20260301);
    const std::array channels{Channel{random}, Channel{random}, Channel{random}};
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(Size) * Size);
    for (int y = 0; y < Size; ++y) {
        for (int x = 0; x < Size; ++x)
            pixels.push_back(channels[0].at(x, y) << 16U | channels[1].at(x, y) << 8U | channels[2].at(x, y));
    }
    return pixels;
}

} // namespace quelto
