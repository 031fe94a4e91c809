// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/BackgroundNotice.h"

#include <QEvent>
#include <QSettings>

namespace quelto {

namespace {

const auto ToldKey = QStringLiteral("windows/ToldAboutBackground");

} // namespace

BackgroundNotice::BackgroundNotice(QWindow& window, QString settingsPath, Desktop desktop)
    : QObject(&window)
    , m_settingsPath(std::move(settingsPath))
    , m_desktop(std::move(desktop))
{
    window.installEventFilter(this);
}

bool BackgroundNotice::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close) {
        windowPutAway();
    }
    return QObject::eventFilter(watched, event);
}

void BackgroundNotice::windowPutAway()
{
    QSettings settings(m_settingsPath, QSettings::IniFormat);
    if (settings.value(ToldKey).toBool() || m_desktop.hasStatusArea()) {
        return;
    }
    settings.setValue(ToldKey, true);
    m_desktop.tell();
}

} // namespace quelto
