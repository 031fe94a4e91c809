// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/StandstillWatch.h"

#include "tests/scene/SceneTime.h"

#include <sched.h>

namespace quelto {

namespace {

constexpr std::int64_t Nap = 2 * Millisecond;
/// A quarter of a frame: what is shorter leaves the frame's time to whoever waited.
constexpr std::int64_t Least = 4 * Millisecond;

bool goAboveOrdinaryThreads(int processor)
{
    cpu_set_t processors;
    CPU_ZERO(&processors);
    CPU_SET(processor, &processors);
    // The lowest of the real-time priorities: it has to be above the tested program only.
    const sched_param parameters{.sched_priority = sched_get_priority_min(SCHED_FIFO)};
    return sched_setaffinity(0, sizeof processors, &processors) == 0 &&
        sched_setscheduler(0, SCHED_FIFO, &parameters) == 0;
}

} // namespace

StandstillWatch::StandstillWatch()
{
    cpu_set_t processors;
    CPU_ZERO(&processors);
    sched_getaffinity(0, sizeof processors, &processors);
    for (int processor = 0; processor < CPU_SETSIZE; ++processor) {
        if (CPU_ISSET(processor, &processors))
            m_threads.emplace_back(&StandstillWatch::watch, this, processor);
    }
}

StandstillWatch::~StandstillWatch()
{
    m_isEnding = true;
    for (std::thread& thread : m_threads)
        thread.join();
}

std::vector<StandstillWatch::Standstill> StandstillWatch::standstills() const
{
    const std::lock_guard guard(m_mutex);
    return m_standstills;
}

void StandstillWatch::watch(int processor)
{
    if (!goAboveOrdinaryThreads(processor))
        return;
    while (!m_isEnding) {
        const std::int64_t due = now() + Nap;
        sleepUntil(due);
        const std::int64_t woken = now();
        if (woken < due + Least)
            continue;
        const std::lock_guard guard(m_mutex);
        m_standstills.push_back({.from = due, .to = woken});
    }
}

} // namespace quelto
