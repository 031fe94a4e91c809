// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrontApplication.h"

#include <future>
#include <mutex>
#include <thread>

namespace quelto {

/// Follows the window that the window manager marks as active, on a thread of its own. The shortcut can then be
/// answered without a request to the X server and without reading desktop entries.
class X11FrontApplication final : public FrontApplication {
public:
    /// An empty name means $DISPLAY.
    explicit X11FrontApplication(const QString& displayName = {});
    ~X11FrontApplication() override;
    X11FrontApplication(const X11FrontApplication&) = delete;
    X11FrontApplication& operator=(const X11FrontApplication&) = delete;

    /// Right after the construction, waits until the application is known, half a second at most.
    std::optional<FrontApplicationInfo> current() const override;

private:
    void follow(const QString& displayName);
    void publish(std::optional<FrontApplicationInfo> info);

    mutable std::mutex m_lock;
    std::optional<FrontApplicationInfo> m_current;
    std::once_flag m_firstPublished;
    std::promise<void> m_firstPromise;
    std::shared_future<void> m_first = m_firstPromise.get_future().share();
    int m_stopDescriptor;
    std::thread m_thread;
};

} // namespace quelto
