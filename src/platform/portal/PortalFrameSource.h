// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrameSource.h"
#include "platform/portal/PortalConnection.h"
#include "platform/portal/PortalScreen.h"

namespace quelto {

class PortalCapture;

/// Captures the screen that the desktop shares with this program. Where the user has to choose it, open() waits for the
/// dialog of the desktop.
///
/// A screen that was rotated, and a desktop service that was restarted, interrupt the frames for a moment: the screen
/// is then shared again without a dialog, and the size of the frames stays.
///
/// Thread: construct and destroy on the main thread.
class PortalFrameSource final : public FrameSource {
public:
    PortalFrameSource(std::shared_ptr<PortalConnection> portal, std::shared_ptr<PortalScreen> screen);
    ~PortalFrameSource() override;

    QSize open(const FrameSourceRequest& request, const std::stop_token& cancelled) override;
    void start(const FrameSourceSettings& settings, FrameSourceEvents events) override;
    void stop() noexcept override;

private:
    std::unique_ptr<PortalCapture> m_capture;
};

} // namespace quelto
