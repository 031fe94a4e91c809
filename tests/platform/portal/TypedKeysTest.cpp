// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalGlobalKeyFixture.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QWindow>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace quelto {
namespace {

/// What a window learns of keys without a keyboard map.
class TypedKeysTest : public test::PortalGlobalKeyFixture {
protected:
    /// The scan code is the kernel's.
    void press(quint32 scanCode, quint32 symbol, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               quint32 nativeModifiers = 0)
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, modifiers, scanCode + 8, symbol, nativeModifiers);
        QCoreApplication::sendEvent(&window, &event);
    }
    QString preferredTrigger()
    {
        const auto list = qdbus_cast<PortalShortcutList>(portal->callsOf("BindShortcuts").last().arguments.at(1));
        return list.first().properties.value(QStringLiteral("preferred_trigger")).toString();
    }

    QWindow window;
};

TEST_F(TypedKeysTest, AreKnownAfterAPressInAWindow)
{
    EXPECT_EQ(key->characters(41), QString());
    press(39, XKB_KEY_odiaeresis, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(key->characters(41), QStringLiteral("ö"));
    press(46, XKB_KEY_C, Qt::ShiftModifier);
    EXPECT_EQ(key->characters(8), QStringLiteral("c"));
    press(46, XKB_KEY_Cyrillic_es);
    EXPECT_EQ(key->characters(8), QStringLiteral("с")) << "the layout has changed";
}

TEST_F(TypedKeysTest, LeaveOutWhatAPressDoesNotTell)
{
    press(2, XKB_KEY_exclam, Qt::ShiftModifier);
    EXPECT_EQ(key->characters(18), QString());
    press(2, XKB_KEY_1);
    press(2, XKB_KEY_exclam, Qt::ShiftModifier);
    EXPECT_EQ(key->characters(18), QStringLiteral("1"));
    for (const auto symbol : {XKB_KEY_space, XKB_KEY_Return, XKB_KEY_dead_acute, XKB_KEY_F1, XKB_KEY_NoSymbol}) {
        press(57, static_cast<quint32>(symbol));
        EXPECT_EQ(key->characters(49), QString()) << symbol;
    }
}

TEST_F(TypedKeysTest, APressWithShiftReplacesNothing)
{
    press(46, XKB_KEY_c);
    press(46, XKB_KEY_Cyrillic_ES, Qt::ShiftModifier);
    EXPECT_EQ(key->characters(8), QStringLiteral("c"));
    press(46, XKB_KEY_V);
    EXPECT_EQ(key->characters(8), QStringLiteral("c")) << "Caps Lock is on";
}

TEST_F(TypedKeysTest, TellTheTwoTurkishLettersApart)
{
    press(23, XKB_KEY_I, Qt::ShiftModifier);
    EXPECT_EQ(key->characters(34), QString()) << "it may be the key of i or of ı";
    press(40, XKB_KEY_Iabovedot, Qt::ShiftModifier);
    EXPECT_EQ(key->characters(39), QStringLiteral("i"));
    press(23, XKB_KEY_idotless);
    press(40, XKB_KEY_i);
    for (const auto modifiers : {Qt::ShiftModifier, Qt::NoModifier}) {
        press(23, XKB_KEY_I, modifiers);
        press(40, XKB_KEY_Iabovedot, modifiers);
        EXPECT_EQ(key->characters(34), QStringLiteral("ı"));
        EXPECT_EQ(key->characters(39), QStringLiteral("i"));
    }
}

TEST_F(TypedKeysTest, LeaveOutTheThirdLevel)
{
    for (const auto level : {0x20U, 0x80U}) {
        press(16, XKB_KEY_at, Qt::NoModifier, level);
        EXPECT_EQ(key->characters(12), QString());
    }
    constexpr quint32 NumLock = 0x10;
    press(16, XKB_KEY_q, Qt::NoModifier, NumLock);
    press(16, XKB_KEY_at, Qt::ControlModifier | Qt::AltModifier, NumLock | 0x80);
    EXPECT_EQ(key->characters(12), QStringLiteral("q"));
}

TEST_F(TypedKeysTest, NameThePreferredKey)
{
    press(39, XKB_KEY_odiaeresis);
    grab(41);
    ASSERT_TRUE(waitForState(State::Held));
    EXPECT_EQ(preferredTrigger(), QStringLiteral("ALT+SHIFT+odiaeresis"));
}

TEST_F(TypedKeysTest, HeldModifiersAreThoseOfTheKeyboard)
{
    EXPECT_EQ(key->heldModifiers(), 0U);
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("keydown"), QStringLiteral("ctrl")}), 0);
    EXPECT_TRUE(waitFor([this] { return key->heldModifiers() == modifierBits::control; }));
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("keyup"), QStringLiteral("ctrl")}), 0);
    EXPECT_TRUE(waitFor([this] { return key->heldModifiers() == 0; }));
}

} // namespace
} // namespace quelto
