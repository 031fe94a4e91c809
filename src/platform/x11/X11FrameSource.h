// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrameSource.h"

#include <thread>

namespace quelto {

class ScreenGrabber;

/// Captures a display of an X server, on a separate thread and connection.
class X11FrameSource final : public FrameSource {
public:
    explicit X11FrameSource(QString displayName = {});
    ~X11FrameSource() override;

    QSize open(const FrameSourceRequest& request, const std::stop_token& cancelled) override;
    void start(const FrameSourceSettings& settings, FrameSourceEvents events) override;
    void stop() noexcept override;

private:
    QString m_displayName;
    /// Between open() and start().
    std::unique_ptr<ScreenGrabber> m_grabber;
    int m_stopDescriptor = -1;
    std::thread m_thread;
};

} // namespace quelto
