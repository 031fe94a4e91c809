// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/ui/shell/ShellFixture.h"

#include <QQmlComponent>

namespace quelto::test {

// The kernel's codes of keys, by what they type on a US keyboard.
namespace scanCodes {
constexpr quint32 escape = 1;
constexpr quint32 one = 2;
constexpr quint32 tab = 15;
constexpr quint32 q = 16;
constexpr quint32 returnKey = 28;
constexpr quint32 control = 29;
constexpr quint32 k = 37;
constexpr quint32 shift = 42;
constexpr quint32 alt = 56;
constexpr quint32 space = 57;
constexpr quint32 capsLock = 58;
constexpr quint32 f5 = 63;
constexpr quint32 keypad1 = 79;
constexpr quint32 super = 125;
constexpr quint32 calculator = 140;
} // namespace scanCodes

enum class Repeat { first, again };

/// The card of the global shortcut in the window.
class ShortcutCardFixture : public ShellFixture {
protected:
    const QString Title = QStringLiteral("Klip kaydet kısayolu");
    const QString Prompt = QStringLiteral("Tuş kombinasyonuna basın…");
    const QString Explanation =
        QStringLiteral("Oyun içindeyken bile çalışır. Değiştirmek için tıklayın, Esc ile iptal.");

    void SetUp() override
    {
        ShellFixture::SetUp();
        key().typed = {{40, QStringLiteral("k")}, {18, QStringLiteral("1")}, {83, QStringLiteral("1")}};
        hotKeys->registerFromSettings();
        hotKeys->followSettings();
        showCard();
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }

    void TearDown() override
    {
        card.reset();
        ShellFixture::TearDown();
    }

    void showCard()
    {
        QQmlComponent component(engine.get());
        component.setData("import QtQuick\n"
                          "import Quelto.SettingsPage\n"
                          "import Quelto.Theme\n"
                          "Rectangle { width: 700; height: 400; color: Theme.bg; ShortcutCard { width: 700 } }\n",
                          {});
        card.reset(qobject_cast<QQuickItem*>(component.create()));
        ASSERT_TRUE(card) << component.errorString().toStdString();
        card->setParentItem(window->contentItem());
        drawFrame();
    }

    FakeGlobalKey& key() { return static_cast<FakeGlobalKey&>(*fakes.platform.globalKey); }
    std::size_t beeps() { return static_cast<FakeEventSounds&>(*fakes.platform.eventSounds).played.size(); }
    bool isRecording() { return shows(Prompt); }

    /// Returns whether the window handled the event.
    bool send(QEvent::Type type, Qt::Key code, Qt::KeyboardModifiers modifiers, quint32 scanCode,
              Repeat repeat = Repeat::first)
    {
        // As X11 counts: the kernel's code plus 8.
        QKeyEvent event(type, code, modifiers, scanCode + 8, 0, 0, {}, repeat == Repeat::again);
        QCoreApplication::sendEvent(window, &event);
        return event.isAccepted();
    }
    void down(Qt::Key code, Qt::KeyboardModifiers modifiers, quint32 scanCode, Repeat repeat = Repeat::first)
    {
        send(QEvent::ShortcutOverride, code, modifiers, scanCode, repeat);
        send(QEvent::KeyPress, code, modifiers, scanCode, repeat);
    }
    void tap(Qt::Key code, Qt::KeyboardModifiers modifiers, quint32 scanCode)
    {
        down(code, modifiers, scanCode);
        send(QEvent::KeyRelease, code, modifiers, scanCode);
    }
    void record()
    {
        click(Title);
        ASSERT_TRUE(isRecording());
    }

    std::unique_ptr<QQuickItem> card;
};

} // namespace quelto::test
