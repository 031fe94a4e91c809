// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

namespace quelto {

/// Notes when a processor stood still, as those of a virtual machine do while their host has other work.
///
/// A thread on each processor sleeps again and again for a moment, above all that is scheduled in the ordinary way:
/// what keeps it from waking in time is no program that is being tested. Where the real-time class is refused, there is
/// nothing to say, for an ordinary thread would also wait for the tested program.
class StandstillWatch {
public:
    struct Standstill {
        std::int64_t from = 0;
        std::int64_t to = 0;
    };

    StandstillWatch();
    ~StandstillWatch();
    StandstillWatch(const StandstillWatch&) = delete;
    StandstillWatch& operator=(const StandstillWatch&) = delete;

    /// Those so far, of all processors.
    std::vector<Standstill> standstills() const;

private:
    void watch(int processor);

    std::atomic<bool> m_isEnding = false;
    mutable std::mutex m_mutex;
    std::vector<Standstill> m_standstills;
    std::vector<std::thread> m_threads;
};

} // namespace quelto
