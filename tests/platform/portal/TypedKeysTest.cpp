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
    void press(quint32 scanCode, quint32 symbol, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, modifiers, scanCode + 8, symbol, 0);
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
    press(46, XKB_KEY_Cyrillic_ES);
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
