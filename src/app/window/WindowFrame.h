// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWindow>

namespace quelto {

/// The frame nearest to `wanted` that keeps the whole window, with its decoration, on one screen: the screen that shows
/// most of it, or, if none does, the middle of the first. A window whose minimum size exceeds the screen keeps its
/// title bar on it.
///
/// `screens` are the areas without panels and docks; the first is the primary screen.
QRect fittingFrame(const QRect& wanted, const QMargins& decoration, const QSize& smallest, const QList<QRect>& screens);

/// Restores the frame and the maximised state that the window had when the program last ran, or centres it, and saves
/// later changes. Owned by the window.
///
/// Thread: main.
class WindowFrame : public QObject {
    Q_OBJECT

public:
    /// Call before the window is shown.
    WindowFrame(QWindow& window, QString settingsPath);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restore();
    void fitAsDecorated();
    void save();

    QWindow& m_window;
    const QString m_settingsPath;
    QTimer m_untilSave;
    bool m_isFitted = false;
};

} // namespace quelto
