// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DisplayWatch.h"

#include <QGuiApplication>
#include <QScreen>

namespace quelto {

DisplayWatch::DisplayWatch(QObject* parent)
    : QObject(parent)
{
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        follow(screen);
        Q_EMIT changed();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &DisplayWatch::changed);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &DisplayWatch::changed);
    const auto screens = QGuiApplication::screens();
    for (auto* screen : screens) {
        follow(screen);
    }
}

void DisplayWatch::follow(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &DisplayWatch::changed);
}

} // namespace quelto
