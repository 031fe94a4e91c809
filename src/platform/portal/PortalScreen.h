// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/portal/RestoreToken.h"

#include <QSize>

#include <mutex>

namespace quelto {

/// What PortalDisplays and PortalFrameSource share: the choice of the user, and what is known of the chosen screen.
class PortalScreen {
public:
    explicit PortalScreen(QString tokenPath = RestoreToken::defaultPath())
        : m_token(std::move(tokenPath))
    {
    }

    /// Thread: main.
    RestoreToken& token() { return m_token; }

    /// That of the last recording in pixels; empty before the first one. Thread: any.
    QSize size() const
    {
        const std::scoped_lock guard(m_lock);
        return m_size;
    }
    void setSize(QSize size)
    {
        const std::scoped_lock guard(m_lock);
        m_size = size;
    }

private:
    RestoreToken m_token;
    mutable std::mutex m_lock;
    QSize m_size;
};

} // namespace quelto
