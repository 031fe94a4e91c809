// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrontApplication.h"
#include "platform/x11/DesktopEntries.h"

namespace quelto {

/// Identifies the application of the window that the window manager marks as active.
class X11FrontApplication final : public FrontApplication {
public:
    explicit X11FrontApplication(QString displayName = {});

    std::optional<FrontApplicationInfo> current() const override;

private:
    QString m_displayName;
    /// Only a cache.
    mutable DesktopEntries m_applications;
};

} // namespace quelto
