// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/rules/PlaybackRules.h"

#include <algorithm>
#include <cmath>

namespace quelto {

namespace {

constexpr double MinKeptRange = 0.5;

} // namespace

double limitedPosition(double seconds, double duration) noexcept
{
    return std::isnan(seconds) ? 0 : std::max(std::min(seconds, duration), 0.0);
}

bool isAtEnd(double time, double duration) noexcept
{
    constexpr double Tolerance = 0.05;
    return duration > 0 && time >= duration - Tolerance;
}

TimeRange withStart(TimeRange kept, double start) noexcept
{
    kept.start = std::max(std::min(start, kept.end - MinKeptRange), 0.0);
    return kept;
}

TimeRange withEnd(TimeRange kept, double end, double duration) noexcept
{
    kept.end = std::min(std::max(end, kept.start + MinKeptRange), duration);
    return kept;
}

double buildUpOf(double eventTime) noexcept
{
    constexpr double BuildUp = 2;
    return std::max(eventTime - BuildUp, 0.0);
}

QString positionText(double seconds)
{
    const auto whole = std::isfinite(seconds) ? static_cast<qint64>(std::max(seconds, 0.0)) : 0;
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

} // namespace quelto
