// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Displays.h"

namespace quelto {

/// The monitors of an X server. Each call connects anew, so a server that went away and came back is no matter.
class X11Displays final : public Displays {
public:
    explicit X11Displays(QString displayName = {});

    QList<DisplayInfo> all() const override;

private:
    QString m_displayName;
};

} // namespace quelto
