// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>

#include <gtest/gtest.h>

#include <limits>

namespace quelto {

inline constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr double Infinite = std::numeric_limits<double>::infinity();

inline void expectRect(const QRectF& actual, const QRectF& expected)
{
    EXPECT_NEAR(actual.x(), expected.x(), 1e-9);
    EXPECT_NEAR(actual.y(), expected.y(), 1e-9);
    EXPECT_NEAR(actual.width(), expected.width(), 1e-9);
    EXPECT_NEAR(actual.height(), expected.height(), 1e-9);
}

} // namespace quelto
