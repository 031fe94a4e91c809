// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalFrameSource.h"

#include "platform/portal/PortalCapture.h"

namespace quelto {

PortalFrameSource::PortalFrameSource(std::shared_ptr<PortalConnection> portal, std::shared_ptr<PortalScreen> screen)
    : m_capture(std::make_unique<PortalCapture>(std::move(portal), std::move(screen)))
{
}

PortalFrameSource::~PortalFrameSource() = default;

QSize PortalFrameSource::open(const FrameSourceRequest& request, const std::stop_token& cancelled)
{
    return m_capture->open(request.showsCursor ? ScreenCastCursor::embedded : ScreenCastCursor::hidden, cancelled);
}

void PortalFrameSource::start(const FrameSourceSettings& settings, FrameSourceEvents events)
{
    m_capture->start(settings, std::move(events));
}

void PortalFrameSource::stop() noexcept
{
    m_capture->stop();
}

} // namespace quelto
