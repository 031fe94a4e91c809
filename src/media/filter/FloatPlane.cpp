// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FloatPlane.h"

#include <algorithm>
#include <cmath>

namespace quelto {

namespace {

/// A Gaussian is cut where it is too small for 8 bits.
constexpr double RadiusInSigmas = 3.5;

void addScaled(float* sum, const float* values, float weight, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        sum[i] += weight * values[i];
    }
}

} // namespace

FloatPlane::FloatPlane(QSize size)
    : m_size(size)
    , m_values(static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()))
{
}

std::vector<float> gaussian(double sigma)
{
    const int radius = static_cast<int>(std::ceil(sigma * RadiusInSigmas));
    std::vector<double> exact;
    double sum = 0;
    for (int i = -radius; i <= radius; ++i) {
        exact.push_back(radius == 0 ? 1 : std::exp(-0.5 * i * i / (sigma * sigma)));
        sum += exact.back();
    }
    std::vector<float> taps(exact.size());
    std::ranges::transform(exact, taps.begin(), [sum](double value) { return static_cast<float>(value / sum); });
    return taps;
}

void convolve(const FloatPlane& plane, const std::vector<float>& taps, FloatPlane& result)
{
    const auto width = static_cast<std::size_t>(plane.size().width());
    const auto resultWidth = static_cast<std::size_t>(result.size().width());
    std::vector<float> column(width);
    for (int y = 0; y < result.size().height(); ++y) {
        std::ranges::fill(column, 0.0F);
        for (std::size_t i = 0; i < taps.size(); ++i) {
            addScaled(column.data(), plane.row(y + static_cast<int>(i)), taps[i], width);
        }
        std::fill_n(result.row(y), resultWidth, 0.0F);
        for (std::size_t i = 0; i < taps.size(); ++i) {
            addScaled(result.row(y), column.data() + i, taps[i], resultWidth);
        }
    }
}

} // namespace quelto
