// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/EventLoopQueue.h"
#include "platform/applications/CurrentApplication.h"

#include <memory>

namespace quelto {

/// The application of the window that KWin has made active. Follows it on a thread of its own, which also reads desktop
/// entries.
class KWinFrontApplication final : public FrontApplication {
public:
    KWinFrontApplication();
    ~KWinFrontApplication() override;
    KWinFrontApplication(const KWinFrontApplication&) = delete;
    KWinFrontApplication& operator=(const KWinFrontApplication&) = delete;

    std::optional<FrontApplicationInfo> current() const override { return m_current.get(); }

private:
    class Follower;

    CurrentApplication m_current;
    /// Lives on the queue.
    std::unique_ptr<Follower> m_follower;
    EventLoopQueue m_queue;
};

} // namespace quelto
