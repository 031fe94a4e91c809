// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/Hud.h"

#include <QGuiApplication>
#include <QPointer>
#include <QQuickItem>
#include <QScreen>

namespace quelto {

namespace {

constexpr QSize WindowSize{330, 66};
constexpr int RightMargin = 24;
constexpr int TopMargin = 48;
constexpr std::chrono::milliseconds DisplayTime{2600};
constexpr std::chrono::milliseconds FadeOutTime{300};

} // namespace

Hud::Hud(QQmlEngine& engine, TaskQueue& main)
    : m_engine(engine)
    , m_main(main)
{
}

Hud::~Hud() = default;

void Hud::show(const HudMessage& message)
{
    m_window = std::make_unique<QQuickView>(&m_engine, nullptr);
    // Bypasses the window manager: nothing else places a window above a full-screen one without taking the focus.
    m_window->setFlags(Qt::ToolTip | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                       Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    m_window->setColor(Qt::transparent);
    m_window->setResizeMode(QQuickView::SizeRootObjectToView);
    m_window->setInitialProperties({{QStringLiteral("title"), message.title},
                                    {QStringLiteral("subtitle"), message.subtitle},
                                    {QStringLiteral("error"), message.error},
                                    {QStringLiteral("tier"), message.tier ? tagOf(*message.tier) : QString()}});
    m_window->setSource(QUrl(QStringLiteral("qrc:/Quelto/Shell/HudView.qml")));
    m_window->resize(WindowSize);
    if (const auto* screen = QGuiApplication::primaryScreen()) {
        const auto area = screen->geometry();
        m_window->setPosition(area.right() + 1 - WindowSize.width() - RightMargin, area.top() + TopMargin);
    }
    m_window->show();
    postForWindow(DisplayTime, [this] {
        m_window->rootObject()->setProperty("leaving", true);
        postForWindow(FadeOutTime, [this] { m_window.reset(); });
    });
}

void Hud::postForWindow(HostDuration delay, std::function<void()> task)
{
    const QPointer<QQuickView> window(m_window.get());
    m_main.postAfter(delay, [window, task = std::move(task)] {
        if (!window.isNull()) {
            task();
        }
    });
}

} // namespace quelto
