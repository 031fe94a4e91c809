// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/RaiseWithoutToken.h"

#include "platform/ActivationToken.h"

#include <QGuiApplication>

namespace quelto {

void prepareToRaise(QWindow& window)
{
    const auto isWayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (isWayland && activationToken::present().isEmpty() && !window.isActive()) {
        window.setVisible(false);
    }
}

} // namespace quelto
