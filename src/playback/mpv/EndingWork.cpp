// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/EndingWork.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr auto ExitTimeout = 2s;

struct Count {
    std::mutex lock;
    std::condition_variable changed;
    int running = 0;
};

/// The process's exit destroys it.
struct WaitAtExit {
    ~WaitAtExit()
    {
        std::unique_lock guard(count->lock);
        count->changed.wait_for(guard, ExitTimeout, [this] { return count->running == 0; });
    }

    /// Work that takes longer than the wait shares it.
    const std::shared_ptr<Count> count = std::make_shared<Count>();
};

} // namespace

EndingWork::EndingWork()
{
    static const WaitAtExit waitAtExit;
    const auto count = waitAtExit.count;
    {
        const std::scoped_lock guard(count->lock);
        ++count->running;
    }
    m_token = std::shared_ptr<void>(nullptr, [count](void* /*unused*/) {
        const std::scoped_lock guard(count->lock);
        --count->running;
        count->changed.notify_all();
    });
}

} // namespace quelto
