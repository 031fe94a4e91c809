// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/WindowFrame.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

namespace quelto {

namespace {

// A crash loses at most the last movement.
constexpr std::chrono::seconds SaveFrameDelay{1};

const auto FrameKey = QStringLiteral("windows/QueltoMain");
const auto MaximizedKey = QStringLiteral("windows/QueltoMainMaximized");

QList<QRect> screensPrimaryFirst()
{
    // Qt lists the primary screen first.
    QList<QRect> all;
    for (const auto* screen : QGuiApplication::screens()) {
        all.append(screen->availableGeometry());
    }
    return all;
}

int areaOf(const QRect& rect)
{
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

} // namespace

QRect fittingFrame(const QRect& wanted, const QMargins& decoration, const QSize& smallest, const QList<QRect>& screens)
{
    if (screens.isEmpty()) {
        return wanted;
    }
    const auto shown = [&](const QRect& screen) { return areaOf(screen.intersected(wanted)); };
    const auto screen = *std::ranges::max_element(screens, {}, shown);
    const auto room = screen.marginsRemoved(decoration);
    auto frame = QRect(wanted.topLeft(), wanted.size().expandedTo(smallest).boundedTo(room.size()));
    if (shown(screen) == 0) {
        frame.moveCenter(room.center());
    }
    frame.moveRight(std::min(frame.right(), room.right()));
    frame.moveBottom(std::min(frame.bottom(), room.bottom()));
    // Top and left come last: the start of the title bar must stay visible.
    frame.moveLeft(std::max(frame.left(), room.left()));
    frame.moveTop(std::max(frame.top(), room.top()));
    return frame;
}

WindowFrame::WindowFrame(QWindow& window, SettingsFile& settings)
    : QObject(&window)
    , m_window(window)
    , m_settings(settings)
    , m_designedMinimum(window.minimumSize())
{
    restore();
    followScreen();
    // Queued: until then an old screen that was removed still exists.
    connect(&window, &QWindow::screenChanged, this, &WindowFrame::followScreen, Qt::QueuedConnection);
    m_untilSave.setSingleShot(true);
    m_untilSave.setInterval(SaveFrameDelay);
    m_untilSave.callOnTimeout(this, &WindowFrame::save);
    window.installEventFilter(this);
    connect(&window, &QWindow::visibleChanged, this, [this](bool isVisible) {
        m_isFitted = m_isFitted && isVisible;
        save();
    });
    connect(qApp, &QCoreApplication::aboutToQuit, this, &WindowFrame::save);
}

bool WindowFrame::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Expose:
        fitAsDecorated();
        break;
    case QEvent::Move:
    case QEvent::Resize:
        m_untilSave.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void WindowFrame::restore()
{
    const auto saved = m_settings.stored().value(FrameKey).toRect();
    const auto screens = screensPrimaryFirst();
    auto wanted = saved.isValid() ? saved : m_window.geometry();
    if (!saved.isValid() && !screens.isEmpty()) {
        wanted.moveCenter(screens.first().center());
    }
    const auto frame = fittingFrame(wanted, {}, m_designedMinimum, screens);
    m_window.setMinimumSize(m_designedMinimum.boundedTo(frame.size()));
    m_window.setGeometry(frame);
    if (m_settings.stored().value(MaximizedKey).toBool()) {
        m_window.setWindowStates(Qt::WindowMaximized);
    }
}

void WindowFrame::followScreen()
{
    // The user may be dragging the window, unless the old screen is gone.
    const bool isDragged = m_screen != nullptr;
    if (m_screen != nullptr) {
        m_screen->disconnect(this);
    }
    m_screen = m_window.screen();
    if (m_screen != nullptr) {
        connect(m_screen, &QScreen::availableGeometryChanged, this, &WindowFrame::fitAgain);
    }
    if (isDragged) {
        limitMinimumSize();
    } else {
        fitAgain();
    }
}

void WindowFrame::limitMinimumSize()
{
    if (m_screen != nullptr) {
        const auto room = m_screen->availableGeometry().marginsRemoved(m_window.frameMargins());
        m_window.setMinimumSize(m_designedMinimum.boundedTo(room.size()));
    }
}

void WindowFrame::fitAgain()
{
    m_isFitted = false;
    fitAsDecorated();
}

/// The size of the window manager's decoration is only known when the window is shown.
void WindowFrame::fitAsDecorated()
{
    if (m_isFitted || !m_window.isExposed()) {
        return;
    }
    m_isFitted = true;
    limitMinimumSize();
    if (m_window.windowStates() != Qt::WindowNoState) {
        return;
    }
    const auto frame =
        fittingFrame(m_window.geometry(), m_window.frameMargins(), m_designedMinimum, screensPrimaryFirst());
    if (frame != m_window.geometry()) {
        m_window.setGeometry(frame);
    }
}

void WindowFrame::save()
{
    const bool isMaximized = m_window.windowStates().testFlag(Qt::WindowMaximized);
    m_settings.setValue(MaximizedKey, isMaximized);
    // While maximised, keep the frame to which the window returns.
    if (!isMaximized) {
        m_settings.setValue(FrameKey, m_window.geometry());
    }
}

} // namespace quelto
