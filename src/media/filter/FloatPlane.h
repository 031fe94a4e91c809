// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>

#include <vector>

namespace quelto {

/// One component of a small picture.
class FloatPlane {
public:
    explicit FloatPlane(QSize size);

    QSize size() const { return m_size; }
    float* row(int y) { return m_values.data() + offset(y); }
    const float* row(int y) const { return m_values.data() + offset(y); }

private:
    std::size_t offset(int y) const { return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.width()); }

    QSize m_size;
    std::vector<float> m_values;
};

/// The taps of a Gaussian, which add up to 1. Their number is odd.
std::vector<float> gaussian(double sigma);

/// Convolves both directions. The result has taps − 1 fewer pixels on each side together.
void convolve(const FloatPlane& plane, const std::vector<float>& taps, FloatPlane& result);

} // namespace quelto
