// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/BoxSampler.h"

namespace quelto {

namespace {

void addRow(std::vector<float>& sum, const std::uint8_t* row, float weight)
{
    auto* out = sum.data();
    const auto count = sum.size();
    for (std::size_t x = 0; x < count; ++x) {
        out[x] += weight * static_cast<float>(row[x]);
    }
}

} // namespace

BoxSampler::BoxSampler(Boxes x, Boxes y, QSize plane)
    : m_x(tapsOf(x, plane.width()))
    , m_y(tapsOf(y, plane.height()))
    , m_firstPixel(m_x.front().front().pixel)
    , m_row(static_cast<std::size_t>(m_x.back().back().pixel - m_firstPixel + 1))
{
}

BoxSampler::Taps BoxSampler::tapsOf(const Boxes& boxes, int length)
{
    Taps taps(static_cast<std::size_t>(boxes.count));
    for (std::size_t i = 0; i < taps.size(); ++i) {
        const auto begin = boxes.origin + static_cast<double>(i) * boxes.length;
        const auto end = begin + boxes.length;
        for (double pixel = std::floor(begin); pixel < end; ++pixel) {
            const auto overlap = std::min(end, pixel + 1) - std::max(begin, pixel);
            const auto inside = std::clamp(pixel, 0.0, length - 1.0);
            taps[i].push_back({static_cast<int>(inside), static_cast<float>(overlap / boxes.length)});
        }
    }
    return taps;
}

void BoxSampler::sample(const Plane& plane, FloatPlane& result)
{
    for (std::size_t y = 0; y < m_y.size(); ++y) {
        std::ranges::fill(m_row, 0.0F);
        for (const auto& tap : m_y[y]) {
            addRow(m_row, plane.data + tap.pixel * plane.stride + m_firstPixel, tap.weight);
        }
        auto* out = result.row(static_cast<int>(y));
        for (std::size_t x = 0; x < m_x.size(); ++x) {
            float sum = 0;
            for (const auto& tap : m_x[x]) {
                sum += tap.weight * m_row[static_cast<std::size_t>(tap.pixel - m_firstPixel)];
            }
            out[x] = sum;
        }
    }
}

} // namespace quelto
