// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/Hud.h"

#include "platform/OverlayPicture.h"

#include <QGuiApplication>
#include <QPointer>
#include <QQuickItem>
#include <QScreen>

#include <cmath>

namespace quelto {

namespace {

constexpr QSize WindowSize{330, 66};
constexpr int RightMargin = 24;
constexpr int TopMargin = 48;
// The same as the theme's roles hudEnter and hudLeave.
constexpr std::chrono::milliseconds FadeInTime{150};
constexpr std::chrono::milliseconds FadeOutTime{300};

/// The same picture for a screen whose scale factor is a whole number.
QImage withWholeRatio(const QImage& image)
{
    const auto ratio = std::ceil(image.devicePixelRatio());
    if (ratio == image.devicePixelRatio()) {
        return image;
    }
    // A compositor refuses a picture whose size is not a multiple of the factor.
    const auto size = image.deviceIndependentSize().toSize() * static_cast<int>(ratio);
    auto scaled = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(ratio);
    return scaled;
}

} // namespace

Hud::Hud(QQmlEngine& engine, TaskQueue& main)
    : m_engine(engine)
    , m_main(main)
{
}

Hud::~Hud() = default;

void Hud::show(const HudMessage& message)
{
    m_window = makeView(message, Form::window);
    // Bypasses the window manager: nothing else places a window above a full-screen one without taking the focus.
    m_window->setFlags(Qt::ToolTip | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                       Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
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

void Hud::showOn(Overlay& overlay, const HudMessage& message)
{
    const auto view = makeView(message, Form::picture);
    view->create();
    const auto image = view->grabWindow();
    if (image.isNull()) {
        return;
    }
    overlay.show({.image = withWholeRatio(image).convertToFormat(QImage::Format_ARGB32_Premultiplied),
                  .rightMargin = RightMargin,
                  .topMargin = TopMargin,
                  .fadeIn = FadeInTime,
                  .displayTime = DisplayTime,
                  .fadeOut = FadeOutTime});
}

std::unique_ptr<QQuickView> Hud::makeView(const HudMessage& message, Form form) const
{
    auto view = std::make_unique<QQuickView>(&m_engine, nullptr);
    view->setColor(Qt::transparent);
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->resize(WindowSize);
    view->setInitialProperties({{QStringLiteral("title"), message.title},
                                {QStringLiteral("subtitle"), message.subtitle},
                                {QStringLiteral("error"), message.error},
                                {QStringLiteral("tier"), message.tier ? tagOf(*message.tier) : QString()},
                                {QStringLiteral("still"), form == Form::picture}});
    view->setSource(QUrl(QStringLiteral("qrc:/Quelto/Shell/HudView.qml")));
    return view;
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
