// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Displays.h"

namespace quelto {

/// The monitors of an X server. Each call opens a new connection, so it works again after a restart of the server.
class X11Displays final : public Displays {
public:
    explicit X11Displays(QString displayName = {});

    QList<DisplayInfo> all() const override;

private:
    QString m_displayName;
};

} // namespace quelto
