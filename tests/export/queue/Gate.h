// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/queue/ExportControl.h"

#include <atomic>
#include <latch>
#include <memory>

namespace quelto::test {

/// Blocks a job until the test opens it. The job owns it together with the test.
class Gate {
public:
    void open() const
    {
        m_state->isOpen = true;
        m_state->isOpen.notify_all();
    }
    void waitUntilReached() const { m_state->reached.wait(); }
    /// Called by the job.
    void pass() const
    {
        m_state->reached.count_down();
        m_state->isOpen.wait(false);
    }
    /// Called by the job: waits for the stop request too.
    void passOrStop(const std::stop_token& stop) const
    {
        const std::stop_callback onStop(stop, [this] { open(); });
        pass();
        if (stop.stop_requested()) {
            throw ExportStopped();
        }
    }

private:
    struct State {
        std::latch reached{1};
        std::atomic<bool> isOpen = false;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace quelto::test
