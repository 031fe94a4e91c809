// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/rules/FrameTimes.h"

#include "playback/rules/RepeatedFrames.h"

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

double FrameTimes::seekTime(double time) const
{
    const auto shown = shownAt(time);
    const auto next = nextAfter(time);
    if (!next) {
        // After the last picture, libmpv keeps it and starts the sound at the time itself.
        return time > shown + RepeatedFrames::MinPause ? time : shown;
    }
    return *next > shown + RepeatedFrames::MinPause ? RepeatedFrames::lastShown(time, shown, *next) : shown;
}

bool FrameTimes::hasPauses() const
{
    const auto isPause = [](double shown, double next) { return next > shown + RepeatedFrames::MinPause; };
    return std::ranges::adjacent_find(m_times, isPause) != m_times.end();
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
