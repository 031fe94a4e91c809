// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReferenceImage.h"

#include <cmath>
#include <random>

namespace quelto::test {

namespace {

constexpr double Kr = 0.2126;
constexpr double Kb = 0.0722;

double psnr(double squaredError, std::size_t count)
{
    return 10 * std::log10(255.0 * 255.0 / (squaredError / static_cast<double>(count)));
}

/// For each output position, the source positions that it covers and their weights.
std::vector<std::vector<std::pair<int, double>>> areas(int source, int output)
{
    std::vector<std::vector<std::pair<int, double>>> result;
    const double ratio = static_cast<double>(source) / output;
    for (int position = 0; position < output; ++position) {
        auto& parts = result.emplace_back();
        for (int candidate = 0; candidate < source; ++candidate) {
            const double overlap =
                std::min((position + 1) * ratio, candidate + 1.0) - std::max(position * ratio, 1.0 * candidate);
            if (overlap > 0) {
                parts.emplace_back(candidate, overlap / ratio);
            }
        }
    }
    return result;
}

} // namespace

SourceImage::SourceImage(Kind kind, QSize size)
    : m_size(size)
    , m_stride(size.width() * 4 + 20)
    , m_pixels(static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(size.height()), 0x5a)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> coin(0, 1);
    std::normal_distribution<double> grain(0, 6);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const double u = static_cast<double>(x) / size.width();
            const double v = static_cast<double>(y) / size.height();
            switch (kind) {
            case Kind::natural: {
                // Smooth gradients, hard edges and noise.
                const double hills = 90 + 60 * std::sin(9 * u + 4 * v) + 40 * std::cos(23 * v * u);
                const double edge = (static_cast<int>(u * 13) + static_cast<int>(v * 7)) % 3 == 0 ? 45 : 0;
                set(x, y, hills + edge + grain(random), 0.8 * hills + 30 + grain(random), 200 - hills + grain(random));
                break;
            }
            case Kind::gradient:
                set(x, y, 255 * u, 255 * v, 255 * (1 - u));
                break;
            case Kind::saturatedNoise:
                set(x, y, 255 * coin(random), 255 * coin(random), 255 * coin(random));
                break;
            }
        }
    }
}

SourceImage::SourceImage(std::uint32_t rgb, QSize size)
    : m_size(size)
    , m_stride(size.width() * 4)
    , m_pixels(static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(size.height()))
{
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            set(x, y, rgb >> 16 & 255, rgb >> 8 & 255, rgb & 255);
        }
    }
}

void SourceImage::set(int x, int y, double red, double green, double blue)
{
    auto* pixel = m_pixels.data() + static_cast<std::ptrdiff_t>(y) * m_stride + x * 4;
    const auto byte = [](double value) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
    };
    pixel[0] = byte(blue);
    pixel[1] = byte(green);
    pixel[2] = byte(red);
}

double SourceImage::value(int x, int y, int channel) const
{
    return m_pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_stride) +
                    static_cast<std::size_t>(x * 4L + channel)];
}

ReferencePlanes referencePlanes(const SourceImage& image, QSize outputSize)
{
    const auto columns = areas(image.size().width(), outputSize.width());
    const auto rows = areas(image.size().height(), outputSize.height());
    const int width = outputSize.width();
    const int height = outputSize.height();
    ReferencePlanes planes{
        .luma = std::vector<double>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)),
        .chroma = std::vector<double>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) / 2)};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double channels[3] = {};
            for (const auto& [row, rowShare] : rows[static_cast<std::size_t>(y)]) {
                for (const auto& [column, columnShare] : columns[static_cast<std::size_t>(x)]) {
                    for (int channel = 0; channel < 3; ++channel) {
                        channels[channel] += image.value(column, row, channel) / 255 * rowShare * columnShare;
                    }
                }
            }
            const auto [blue, green, red] = channels;
            const double grey = Kr * red + (1 - Kr - Kb) * green + Kb * blue;
            planes.luma[static_cast<std::size_t>(std::ptrdiff_t{y} * width + x)] = 16 + 219 * grey;
            auto* chroma = planes.chroma.data() + std::ptrdiff_t{y / 2} * width + x / 2 * 2;
            chroma[0] += (128 + 112 * (blue - grey) / (1 - Kb)) / 4;
            chroma[1] += (128 + 112 * (red - grey) / (1 - Kr)) / 4;
        }
    }
    return planes;
}

Fidelity fidelity(const VideoFrame& frame, const ReferencePlanes& reference)
{
    double luma = 0;
    double chroma = 0;
    const int width = frame.size.width();
    for (int y = 0; y < frame.size.height(); ++y) {
        const auto* actual = frame.luma + std::ptrdiff_t{y} * frame.stride;
        const auto* expected = reference.luma.data() + std::ptrdiff_t{y} * width;
        for (int x = 0; x < width; ++x) {
            luma += std::pow(actual[x] - expected[x], 2);
        }
    }
    for (int y = 0; y < frame.size.height() / 2; ++y) {
        const auto* actual = frame.chroma + std::ptrdiff_t{y} * frame.stride;
        const auto* expected = reference.chroma.data() + std::ptrdiff_t{y} * width;
        for (int x = 0; x < width; ++x) {
            chroma += std::pow(actual[x] - expected[x], 2);
        }
    }
    return {.luma = psnr(luma, reference.luma.size()), .chroma = psnr(chroma, reference.chroma.size())};
}

} // namespace quelto::test
