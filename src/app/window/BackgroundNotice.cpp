// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/BackgroundNotice.h"

#include <QEvent>

namespace quelto {

namespace {

const auto ToldKey = QStringLiteral("windows/ToldAboutBackground");

} // namespace

BackgroundNotice::BackgroundNotice(QWindow& window, SettingsFile& settings, Desktop desktop)
    : QObject(&window)
    , m_settings(settings)
    , m_desktop(std::move(desktop))
    , m_isTold(settings.stored().value(ToldKey).toBool())
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
    if (m_isTold || m_desktop.hasStatusArea()) {
        return;
    }
    m_isTold = true;
    m_settings.setValue(ToldKey, true);
    m_desktop.tell();
}

} // namespace quelto
