// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/HotKeyManager.h"

#include "tests/ui/shell/ShortcutCardFixture.h"

#include <QClipboard>

namespace quelto::test {
namespace {

class SettingsDesktopShortcutTest : public ShortcutCardFixture { };

TEST_F(SettingsDesktopShortcutTest, ShowsTheKeysThatTheDesktopBound)
{
    const auto note = QStringLiteral("Masaüstünüz Alt+Shift+C yerine Ctrl+F9 tuşlarını kullanıyor. Bunu masaüstünüzün "
                                     "klavye ayarlarından değiştirebilirsiniz.");
    key().bind(QStringLiteral("Shift+Alt+C"));
    EXPECT_EQ(descriptionOf(Title), QStringLiteral("Alt+Shift+C\n") + Explanation);
    EXPECT_FALSE(shows(note));
    key().bind(QStringLiteral("Ctrl+F9"));
    EXPECT_EQ(descriptionOf(Title), QStringLiteral("Ctrl+F9\n") + Explanation);
    EXPECT_TRUE(shows(note));
    EXPECT_NE(itemNamed(window, note), nullptr);
    drawFrame();
    EXPECT_EQ(truncatedTexts(), QStringList());
    EXPECT_EQ(descriptionOf(QStringLiteral("Klip Kaydet")), QStringLiteral("Ctrl+F9"));
    picture(QStringLiteral("settings-shortcut-other-keys"));
    key().setState(GlobalKey::State::ReservedByDesktop);
    EXPECT_FALSE(shows(note));
}

TEST_F(SettingsDesktopShortcutTest, ShowsTheKeysAlsoWhileTheDesktopBindsNewOnes)
{
    key().bind(QStringLiteral("Ctrl+F9"));
    key().stateOfGrabs = GlobalKey::State::Released;
    record();
    tap(Qt::Key_K, Qt::ControlModifier, scanCodes::k);
    EXPECT_EQ(descriptionOf(Title), QStringLiteral("Ctrl+F9\n") + Explanation);
    key().bind(QStringLiteral("Ctrl+K"));
    EXPECT_EQ(descriptionOf(Title), QStringLiteral("Ctrl+K\n") + Explanation);
}

TEST_F(SettingsDesktopShortcutTest, ReservedKeysAreShownOnlyAsAPreference)
{
    const auto save = QStringLiteral("Klip Kaydet");
    EXPECT_EQ(descriptionOf(save), QStringLiteral("Alt+Shift+C"));
    key().setState(GlobalKey::State::ReservedByDesktop);
    drawFrame();
    EXPECT_EQ(descriptionOf(Title), QStringLiteral("Alt+Shift+C\nDeğiştirmek için tıklayın, Esc ile iptal."));
    EXPECT_EQ(descriptionOf(save), QString());
}

TEST_F(SettingsDesktopShortcutTest, CopiesTheCommand)
{
    EXPECT_EQ(itemNamed(window, QStringLiteral("Kopyala")), nullptr);
    key().setState(GlobalKey::State::ReservedByDesktop);
    drawFrame();
    QGuiApplication::clipboard()->clear();
    click(QStringLiteral("Kopyala"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), HotKeyManager::command());
    EXPECT_EQ(navigation->toast(), QStringLiteral("Komut kopyalandı"));
}

TEST_F(SettingsDesktopShortcutTest, CommandCanBeSelectedAndLeftByKeyboard)
{
    key().setState(GlobalKey::State::ReservedByDesktop);
    drawFrame();
    item(Title)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_Tab);
    auto* field = item(QStringLiteral("Komut"));
    EXPECT_TRUE(field->hasActiveFocus());
    QTest::keyClick(window, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(field->property("selectedText").toString(), HotKeyManager::command());
    QTest::keyClick(window, Qt::Key_X);
    EXPECT_EQ(field->property("text").toString(), HotKeyManager::command()) << "it is read-only";
    QTest::keyClick(window, Qt::Key_Tab);
    EXPECT_TRUE(item(QStringLiteral("Kopyala"))->hasActiveFocus());
    QTest::keyClick(window, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(window, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(item(Title)->hasActiveFocus());
}

} // namespace
} // namespace quelto::test
