// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/WindowFrame.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>

namespace quelto {

namespace {

// So much of the window must be on a screen that it can be seen and dragged.
constexpr int LeastVisible = 120;

const auto FrameKey = QStringLiteral("windows/QueltoMain");

bool isReachable(const QRect& frame)
{
    const auto screens = QGuiApplication::screens();
    return std::ranges::any_of(screens, [&](const QScreen* screen) {
        const auto visible = screen->availableGeometry().intersected(frame);
        return visible.width() >= LeastVisible && visible.height() >= LeastVisible;
    });
}

} // namespace

void restoreFrame(QWindow& window, const QString& settingsPath)
{
    const auto saved = QSettings(settingsPath, QSettings::IniFormat).value(FrameKey).toRect();
    if (saved.isValid() && isReachable(saved)) {
        window.setGeometry(saved);
    } else if (const auto* screen = window.screen()) {
        auto frame = window.geometry();
        frame.moveCenter(screen->availableGeometry().center());
        window.setGeometry(frame);
    }
}

void saveFrame(const QWindow& window, const QString& settingsPath)
{
    QSettings(settingsPath, QSettings::IniFormat).setValue(FrameKey, window.geometry());
}

} // namespace quelto
