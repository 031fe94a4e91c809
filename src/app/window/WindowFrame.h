// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWindow>

namespace quelto {

/// The frame for a window's contents nearest to the wanted one that leaves the whole window, with what the window
/// manager draws around it, on one of the screens: the one that shows most of it, or, where none does, the middle of
/// the first. A window whose smallest size exceeds the screen keeps its title bar on it.
///
/// `screens` are what panels and docks leave of them; the first is the primary one.
QRect fittingFrame(const QRect& wanted, const QMargins& decoration, const QSize& smallest, const QList<QRect>& screens);

/// Puts a window where it stood when the program last ran, as large as the screen if it was, and without a saved frame
/// in the middle of the screen; keeps what it is moved to. It belongs to the window.
///
/// Thread: main.
class WindowFrame : public QObject {
    Q_OBJECT

public:
    /// For a window that was not shown yet.
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
