// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/SettingsFile.h"

#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace quelto {

/// The frame nearest to `wanted` that keeps the whole window, with its decoration, on one screen: the screen that shows
/// most of it, or, if none does, the middle of the first. It is not smaller than `smallest` unless the screen is.
///
/// `screens` are the areas without panels and docks; the first is the primary screen.
QRect fittingFrame(const QRect& wanted, const QMargins& decoration, const QSize& smallest, const QList<QRect>& screens);

/// Restores the frame and the maximised state that the window had when the program last ran, or centres it, and saves
/// later changes. The minimum size that the window has at first applies as far as its screen has room for it. Owned by
/// the window.
///
/// Thread: main.
class WindowFrame : public QObject {
    Q_OBJECT

public:
    /// Call before the window is shown.
    WindowFrame(QWindow& window, SettingsFile& settings);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restore();
    void followScreen();
    void limitMinimumSize();
    void fitAgain();
    void fitAsDecorated();
    void save();

    QWindow& m_window;
    SettingsFile& m_settings;
    const QSize m_designedMinimum;
    QPointer<QScreen> m_screen;
    QTimer m_untilSave;
    bool m_isFitted = false;
};

} // namespace quelto
