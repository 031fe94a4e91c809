// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrontApplication.h"
#include "platform/x11/DesktopEntries.h"

namespace quelto {

/// The window that the window manager calls active, and the program it belongs to.
class X11FrontApplication final : public FrontApplication {
public:
    explicit X11FrontApplication(QString displayName = {});

    std::optional<FrontApplicationInfo> current() const override;

private:
    QString m_displayName;
    /// What it remembers is no part of the answer.
    mutable DesktopEntries m_applications;
};

} // namespace quelto
