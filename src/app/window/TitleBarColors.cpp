// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/TitleBarColors.h"

#include <QGuiApplication>
#include <QPalette>

namespace quelto {

void setTitleBarColors(const Theme& theme)
{
    // Elsewhere, only dialogs of Qt would have these colours.
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        return;
    }
    // Qt reads the colours there when it draws the first title bar of a window.
    auto palette = QGuiApplication::palette();
    palette.setColor(QPalette::Window, theme.sidebar());
    palette.setColor(QPalette::WindowText, theme.text());
    palette.setColor(QPalette::Disabled, QPalette::WindowText, theme.muted());
    QGuiApplication::setPalette(palette);
}

} // namespace quelto
