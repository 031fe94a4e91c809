// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/rules/FrameTimes.h"

#include <algorithm>
#include <iterator>

namespace quelto {

namespace {

/// Times are rounded on their way, in files to 1/90,000 s for example.
constexpr double Rounding = 0.0001;

} // namespace

FrameTimes::FrameTimes(std::vector<double> times)
    : m_times(std::move(times))
{
    std::ranges::sort(m_times);
}

double FrameTimes::shownAt(double time) const
{
    if (m_times.empty()) {
        return time;
    }
    const auto next = firstAfter(time);
    return next == m_times.begin() ? m_times.front() : *std::prev(next);
}

std::optional<double> FrameTimes::nextAfter(double time) const
{
    const auto next = firstAfter(time);
    return next == m_times.end() ? std::nullopt : std::optional(*next);
}

std::optional<double> FrameTimes::previousBefore(double time) const
{
    const auto next = firstAfter(time);
    if (next == m_times.begin() || next == std::next(m_times.begin())) {
        return std::nullopt;
    }
    return *std::prev(next, 2);
}

std::vector<double>::const_iterator FrameTimes::firstAfter(double time) const
{
    return std::ranges::upper_bound(m_times, time + Rounding);
}

} // namespace quelto
