// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrameSource.h"

#include <thread>

namespace quelto {

/// Frames of an X server's display, read by a thread and over a connection of its own.
class X11FrameSource final : public FrameSource {
public:
    explicit X11FrameSource(QString displayName = {});
    ~X11FrameSource() override;

    void start(const FrameRequest& request, FrameEvents events) override;
    void stop() noexcept override;

private:
    QString m_displayName;
    int m_stopDescriptor = -1;
    std::thread m_thread;
};

} // namespace quelto
