// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/keys/KeyCodes.h"
#include "base/language/L10n.h"
#include "base/language/T.h"
#include "base/settings/SettingChoices.h"
#include "ui/screens/settings/HotkeyRecorder.h"

#include "tests/ui/shell/ShortcutCardFixture.h"

namespace quelto::test {
namespace {

using Combination = FakeGlobalKey::Combination;

class SettingsShortcutTest : public ShortcutCardFixture { };

TEST_F(SettingsShortcutTest, ShowsTheShortcutAsDesktopsWriteIt)
{
    EXPECT_TRUE(shows(QStringLiteral("Alt+Shift+C")));
    EXPECT_TRUE(shows(Explanation));
    EXPECT_EQ(descriptionOf(Title), QStringLiteral("Alt+Shift+C\n") + Explanation);
    const auto* button = item(Title);
    EXPECT_GE(button->width(), 150);
    EXPECT_EQ(outlineOf(button->property("background").value<QObject*>()).width, 2);
    settings.setHotkeyModifiers(0);
    settings.setHotkeyKeyName(QStringLiteral("F9"));
    EXPECT_TRUE(shows(QStringLiteral("F9")));
}

TEST_F(SettingsShortcutTest, StoresTheNextCombinationAndRegistersItOnce)
{
    record();
    EXPECT_EQ(key().grabbed, std::nullopt) << "the old shortcut must not fire";
    EXPECT_EQ(descriptionOf(Title), Prompt + u'\n' + Explanation);
    EXPECT_EQ(colorOf(textItem(Prompt)), theme->accent());
    const auto grabs = key().grabs;
    down(Qt::Key_Control, Qt::NoModifier, scanCodes::control);
    down(Qt::Key_Shift, Qt::ControlModifier, scanCodes::shift);
    EXPECT_TRUE(isRecording());
    tap(Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier, scanCodes::k);
    EXPECT_EQ(settings.hotkeyCode(), 40U);
    EXPECT_EQ(settings.hotkeyModifiers(), 4096U + 512U);
    EXPECT_EQ(settings.hotkeyKeyName(), QStringLiteral("K"));
    EXPECT_EQ(key().grabs, grabs + 1);
    EXPECT_EQ(key().grabbed, (Combination{40, 4096 + 512}));
    EXPECT_TRUE(shows(QStringLiteral("Ctrl+Shift+K")));
    EXPECT_EQ(descriptionOf(Title), QStringLiteral("Ctrl+Shift+K\n") + Explanation);
    EXPECT_EQ(beeps(), 0U);
}

TEST_F(SettingsShortcutTest, EscapeChangesNothingAndRegistersAgain)
{
    for (const auto modifiers : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)}) {
        record();
        tap(Qt::Key_Escape, modifiers, scanCodes::escape);
        EXPECT_FALSE(isRecording());
        EXPECT_EQ(key().grabbed, (Combination{8, 2560}));
        EXPECT_TRUE(shows(QStringLiteral("Alt+Shift+C")));
    }
    EXPECT_EQ(beeps(), 0U);
}

TEST_F(SettingsShortcutTest, EscapeOnAnotherKeyCancelsToo)
{
    record();
    tap(Qt::Key_Escape, {}, scanCodes::capsLock);
    EXPECT_FALSE(isRecording());
}

TEST_F(SettingsShortcutTest, PlainKeyBeepsAndWaits)
{
    record();
    tap(Qt::Key_K, {}, scanCodes::k);
    tap(Qt::Key_Space, {}, scanCodes::space);
    tap(Qt::Key_Return, Qt::KeypadModifier, scanCodes::returnKey);
    EXPECT_EQ(beeps(), 3U);
    EXPECT_EQ(static_cast<FakeEventSounds&>(*fakes.platform.eventSounds).played.front(), EventSound::bell);
    EXPECT_TRUE(isRecording());
    EXPECT_EQ(settings.hotkeyCode(), 8U);
}

TEST_F(SettingsShortcutTest, AcceptsAFunctionKeyAlone)
{
    record();
    tap(Qt::Key_F5, {}, scanCodes::f5);
    EXPECT_EQ(key().grabbed, (Combination{96, 0}));
    EXPECT_TRUE(shows(QStringLiteral("F5")));
}

TEST_F(SettingsShortcutTest, BareModifiersAndLocksWait)
{
    record();
    tap(Qt::Key_Alt, {}, scanCodes::alt);
    tap(Qt::Key_Shift, Qt::AltModifier, scanCodes::shift);
    tap(Qt::Key_Super_L, {}, scanCodes::super);
    tap(Qt::Key_CapsLock, {}, scanCodes::capsLock);
    // A layout can turn Shift into a switch to another layout.
    tap(Qt::Key_unknown, Qt::AltModifier, scanCodes::shift);
    EXPECT_TRUE(isRecording());
    EXPECT_EQ(beeps(), 0U);
}

TEST_F(SettingsShortcutTest, KeyWithoutAStoredCodeBeeps)
{
    record();
    tap(Qt::Key_Calculator, Qt::ControlModifier, scanCodes::calculator);
    QTest::keyClick(window, Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(beeps(), 2U);
    EXPECT_TRUE(isRecording());
}

TEST_F(SettingsShortcutTest, AddsModifiersThatTheLayoutTakes)
{
    record();
    key().held = 2560;
    tap(Qt::Key_K, Qt::AltModifier, scanCodes::k);
    EXPECT_EQ(key().grabbed, (Combination{40, 2560}));
}

TEST_F(SettingsShortcutTest, NamesTheKeyAndNotItsCharacterWithShift)
{
    record();
    tap(Qt::Key_Exclam, Qt::ShiftModifier, scanCodes::one);
    EXPECT_EQ(settings.hotkeyKeyName(), QStringLiteral("1"));
    EXPECT_EQ(key().grabbed, (Combination{18, 512}));
    record();
    tap(Qt::Key_1, Qt::ControlModifier | Qt::KeypadModifier, scanCodes::keypad1);
    EXPECT_EQ(key().grabbed, (Combination{83, 4096}));
    EXPECT_TRUE(shows(QStringLiteral("Ctrl+1")));
}

TEST_F(SettingsShortcutTest, NoKeyReachesTheWindow)
{
    record();
    for (const auto type : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease}) {
        EXPECT_TRUE(send(type, Qt::Key_Tab, {}, scanCodes::tab)) << type;
    }
    EXPECT_TRUE(item(Title)->hasActiveFocus()) << "Tab moves on";
    QTest::keyClick(window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(requestedActions.contains(QStringLiteral("quit")));
    tap(Qt::Key_Q, Qt::ControlModifier, scanCodes::q);
    EXPECT_FALSE(isRecording());
    EXPECT_FALSE(requestedActions.contains(QStringLiteral("quit")));
    EXPECT_EQ(key().grabbed, (Combination{12, 4096}));
    QTest::keyClick(window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(requestedActions.contains(QStringLiteral("quit"))) << "the menu works again";
}

TEST_F(SettingsShortcutTest, KeysThatOperateTheButtonAreRecorded)
{
    struct Row {
        Qt::Key code;
        quint32 scanCode;
        std::uint32_t stored;
    };
    for (const auto& row : {Row{Qt::Key_Return, scanCodes::returnKey, 36}, Row{Qt::Key_Space, scanCodes::space, 49},
                            Row{Qt::Key_Backtab, scanCodes::tab, 48}}) {
        record();
        down(row.code, Qt::ShiftModifier, row.scanCode);
        EXPECT_FALSE(isRecording());
        for (int count = 0; count < 3; ++count) {
            send(QEvent::KeyRelease, row.code, Qt::ShiftModifier, row.scanCode, Repeat::again);
            down(row.code, Qt::ShiftModifier, row.scanCode, Repeat::again);
        }
        send(QEvent::KeyRelease, row.code, Qt::ShiftModifier, row.scanCode);
        EXPECT_FALSE(isRecording()) << "repeats of the held key press the button";
        EXPECT_TRUE(item(Title)->hasActiveFocus());
        EXPECT_EQ(key().grabbed, (Combination{row.stored, 512}));
    }
}

TEST_F(SettingsShortcutTest, StartsFromTheKeyboardAndIgnoresRepeatsOfThatKey)
{
    item(Title)->forceActiveFocus(Qt::TabFocusReason);
    down(Qt::Key_Return, {}, scanCodes::returnKey);
    ASSERT_TRUE(isRecording());
    down(Qt::Key_Return, {}, scanCodes::returnKey, Repeat::again);
    send(QEvent::KeyRelease, Qt::Key_Return, {}, scanCodes::returnKey);
    EXPECT_TRUE(isRecording());
    EXPECT_EQ(beeps(), 0U);
    tap(Qt::Key_Escape, {}, scanCodes::escape);
    tap(Qt::Key_Space, {}, scanCodes::space);
    EXPECT_TRUE(isRecording()) << "Space presses the button, too";
}

TEST_F(SettingsShortcutTest, ASecondClickStops)
{
    record();
    click(Title);
    EXPECT_FALSE(isRecording());
    EXPECT_EQ(key().grabbed, (Combination{8, 2560}));
}

TEST_F(SettingsShortcutTest, EndsWithoutFocus)
{
    record();
    item(QStringLiteral("Ayarlar"))->forceActiveFocus();
    EXPECT_FALSE(isRecording());
    EXPECT_EQ(key().grabbed, (Combination{8, 2560}));

    record();
    card->setVisible(false);
    EXPECT_EQ(key().grabbed, (Combination{8, 2560}));
    card->setVisible(true);
    EXPECT_FALSE(isRecording());

    record();
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_FALSE(isRecording());
    EXPECT_EQ(key().grabbed, (Combination{8, 2560}));
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));

    record();
    window->hide();
    EXPECT_EQ(key().grabbed, (Combination{8, 2560}));
    window->show();
    EXPECT_FALSE(isRecording());
}

TEST_F(SettingsShortcutTest, EndsWithItsPage)
{
    record();
    card.reset();
    EXPECT_EQ(key().grabbed, (Combination{8, 2560}));
    EXPECT_FALSE(send(QEvent::ShortcutOverride, Qt::Key_K, Qt::ControlModifier, scanCodes::k));
    EXPECT_EQ(settings.hotkeyCode(), 8U);
}

TEST_F(SettingsShortcutTest, RegistersAChangeThatComesFromOutside)
{
    record();
    settings.setHotkeyCode(122);
    EXPECT_EQ(key().grabbed, std::nullopt);
    tap(Qt::Key_Escape, {}, scanCodes::escape);
    EXPECT_EQ(key().grabbed, (Combination{122, 2560}));
}

TEST_F(SettingsShortcutTest, StoresOnlyWhatTheSettingsAccept)
{
    for (const auto& position : keyPositions()) {
        if (position.code == 53) {
            continue;
        }
        record();
        tap(Qt::Key_unknown, Qt::ControlModifier, position.scanCode);
        ASSERT_FALSE(isRecording()) << position.xkbName;
        EXPECT_EQ(settings.hotkeyCode(), position.code);
        EXPECT_TRUE(offeredSetting(QStringLiteral("hotkeyCode"), settings.hotkeyCode())) << position.xkbName;
        EXPECT_TRUE(offeredSetting(QStringLiteral("hotkeyModifiers"), settings.hotkeyModifiers()));
        EXPECT_TRUE(offeredSetting(QStringLiteral("hotkeyKeyName"), settings.hotkeyKeyName())) << position.xkbName;
    }
}

TEST_F(SettingsShortcutTest, TellsWhyThePressDoesNotArrive)
{
    struct Row {
        GlobalKey::State state;
        const char* text;
    };
    const Row rows[] = {
        {GlobalKey::State::Taken, "Başka bir program bu kısayolu kullanıyor. Başka bir kısayol seçin."},
        {GlobalKey::State::SwitchesLayout, "Bu tuşlar klavye düzenini de değiştirir."},
        {GlobalKey::State::Unavailable, "Bu klavyede bu tuşlar yok. Başka bir kısayol seçin."},
        {GlobalKey::State::ReservedByDesktop,
         "Masaüstünüz bu kısayolu Quelto'ye vermedi. Masaüstünüzün klavye ayarlarında şu komutu çalıştıran bir kısayol "
         "ekleyin:"},
    };
    for (const auto& row : rows) {
        key().setState(row.state);
        EXPECT_TRUE(shows(QString::fromUtf8(row.text))) << row.text;
        EXPECT_NE(itemNamed(window, QString::fromUtf8(row.text)), nullptr);
        EXPECT_EQ(itemNamed(window, QStringLiteral("Komut")) != nullptr,
                  row.state == GlobalKey::State::ReservedByDesktop);
        drawFrame();
        EXPECT_EQ(truncatedTexts(), QStringList());
        key().setState(GlobalKey::State::Held);
        EXPECT_FALSE(shows(QString::fromUtf8(row.text)));
    }
}

TEST_F(SettingsShortcutTest, ShowsNoWarningWhileItRecords)
{
    key().stateOfGrabs = GlobalKey::State::Taken;
    hotKeys->registerFromSettings();
    const auto warning = QStringLiteral("Başka bir program bu kısayolu kullanıyor. Başka bir kısayol seçin.");
    ASSERT_TRUE(shows(warning));
    record();
    EXPECT_FALSE(shows(warning));
    tap(Qt::Key_Escape, {}, scanCodes::escape);
    EXPECT_TRUE(shows(warning));
}

TEST_F(SettingsShortcutTest, Pictures)
{
    key().setState(GlobalKey::State::ReservedByDesktop);
    picture(QStringLiteral("settings-shortcut-wayland"));
    key().setState(GlobalKey::State::Taken);
    picture(QStringLiteral("settings-shortcut-taken"));
    record();
    EXPECT_FALSE(picture(QStringLiteral("settings-shortcut-recording")).isNull());
}

TEST_F(SettingsShortcutTest, FitsInTheSmallestWindowInEveryLanguage)
{
    for (const auto language : AllLanguages) {
        settings.setLanguage(rawValueOf(language));
        // The page is rebuilt for another language.
        showCard();
        card->childItems().first()->setWidth(520);
        const auto name = QStringLiteral("settings-shortcut-%1-").arg(rawValueOf(language));
        key().setState(GlobalKey::State::ReservedByDesktop);
        drawFrame();
        EXPECT_EQ(truncatedTexts(), QStringList());
        picture(name + QStringLiteral("reserved"));
        key().bind(QStringLiteral("Ctrl+Alt+Shift+Meta+Backspace"));
        drawFrame();
        EXPECT_EQ(truncatedTexts(), QStringList());
        picture(name + QStringLiteral("other-keys"));
        key().bind(QStringLiteral("Press the red key of the other keyboard twice"));
        drawFrame();
        EXPECT_EQ(truncatedTexts(), QStringList());
        EXPECT_LE(item(T("Klip kaydet kısayolu"))->width(), 260);
    }
}

} // namespace
} // namespace quelto::test
