// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/Hud.h"

#include <QGuiApplication>
#include <QPointer>
#include <QQuickItem>
#include <QScreen>

namespace quelto {

namespace {

constexpr QSize PanelSize{330, 66};
constexpr int FromRight = 24;
constexpr int FromTop = 48;
constexpr std::chrono::milliseconds Standing{2600};
constexpr std::chrono::milliseconds FadingOut{300};

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
    // Past the window manager: nothing else puts a window above a full-screen one without its taking the focus.
    m_window->setFlags(Qt::ToolTip | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                       Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    m_window->setColor(Qt::transparent);
    m_window->setResizeMode(QQuickView::SizeRootObjectToView);
    m_window->setInitialProperties({{QStringLiteral("title"), message.title},
                                    {QStringLiteral("subtitle"), message.subtitle},
                                    {QStringLiteral("error"), message.error},
                                    {QStringLiteral("tier"), message.tier ? tagOf(*message.tier) : QString()}});
    m_window->setSource(QUrl(QStringLiteral("qrc:/Quelto/Shell/HudView.qml")));
    m_window->resize(PanelSize);
    if (const auto* screen = QGuiApplication::primaryScreen()) {
        const auto whole = screen->geometry();
        m_window->setPosition(whole.right() + 1 - PanelSize.width() - FromRight, whole.top() + FromTop);
    }
    m_window->show();
    later(Standing, [this] {
        m_window->rootObject()->setProperty("leaving", true);
        later(FadingOut, [this] { m_window.reset(); });
    });
}

void Hud::later(HostDuration delay, std::function<void()> task)
{
    const QPointer<QQuickView> window(m_window.get());
    m_main.postAfter(delay, [window, task = std::move(task)] {
        if (!window.isNull()) {
            task();
        }
    });
}

} // namespace quelto
