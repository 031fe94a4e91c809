// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/keys/HotKeyText.h"

#include "base/language/L10n.h"

#include <QCoreApplication>
#include <QTranslator>

#include <gtest/gtest.h>

namespace quelto {
namespace {

/// Translates each word to the same other word.
class OtherWords final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* /*context*/, const char* /*word*/, const char* /*comment*/, int /*n*/) const override
    {
        return QStringLiteral("Üst Karakter");
    }
};

TEST(HotKeyText, ShowsTheDefaultShortcut)
{
    EXPECT_EQ(hotKeyDisplay(2560, QStringLiteral("C")), QStringLiteral("⌥⇧C"));
}

TEST(HotKeyText, ShowsModifiersInFixedOrder)
{
    EXPECT_EQ(hotKeyDisplay(256 + 512 + 2048 + 4096, QString()), QStringLiteral("⌃⌥⇧⌘"));
}

TEST(HotKeyText, NamesTheDefaultShortcutAsDesktopsDo)
{
    EXPECT_EQ(hotKeyText(2560, QStringLiteral("C")), QStringLiteral("Alt+Shift+C"));
    EXPECT_EQ(hotKeyWords(2560, QStringLiteral("C")),
              (QStringList{QStringLiteral("Alt"), QStringLiteral("Shift"), QStringLiteral("C")}));
}

TEST(HotKeyText, NamesAllModifiersInTheOrderOfTheirSymbols)
{
    EXPECT_EQ(hotKeyText(256 + 512 + 2048 + 4096, QStringLiteral("F9")), QStringLiteral("Ctrl+Alt+Shift+Super+F9"));
}

TEST(HotKeyText, NamesModifiersInTheLanguageOfQtExceptInTurkish)
{
    int count = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    const QCoreApplication application(count, arguments);
    OtherWords words;
    ASSERT_TRUE(QCoreApplication::installTranslator(&words));
    L10n::use(QStringLiteral("de"));
    EXPECT_EQ(hotKeyText(512, QStringLiteral("C")), QStringLiteral("Üst Karakter+C"));
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(hotKeyText(2560, QStringLiteral("C")), QStringLiteral("Alt+Shift+C"));
}

TEST(HotKeyText, NamesKeysThatAreStoredAsSymbols)
{
    const auto named = [](std::uint32_t code) { return hotKeyText(0, hotKeyName(code, {})); };
    EXPECT_EQ(named(36), QStringLiteral("Return"));
    EXPECT_EQ(named(48), QStringLiteral("Tab"));
    EXPECT_EQ(named(51), QStringLiteral("Backspace"));
    EXPECT_EQ(named(117), QStringLiteral("Del"));
    EXPECT_EQ(named(121), QStringLiteral("PgDown"));
    EXPECT_EQ(named(123), QStringLiteral("←")) << "arrow keys are labelled with arrows";
}

TEST(HotKeyText, RecognizesFunctionKeys)
{
    EXPECT_TRUE(isFunctionKey(122));
    EXPECT_TRUE(isFunctionKey(80));
    EXPECT_FALSE(isFunctionKey(36));
    EXPECT_FALSE(isFunctionKey(49));
}

TEST(HotKeyText, NamesSpecialKeysIndependentOfLayout)
{
    EXPECT_EQ(hotKeyName(49, QStringLiteral(" ")), QStringLiteral("Space"));
    EXPECT_EQ(hotKeyName(117, QStringLiteral("x")), QStringLiteral("⌦"));
    EXPECT_EQ(hotKeyName(80, QString()), QStringLiteral("F19"));
}

TEST(HotKeyText, NamesOtherKeysByTheirCharacters)
{
    EXPECT_EQ(hotKeyName(8, QStringLiteral("c")), QStringLiteral("C"));
    EXPECT_EQ(hotKeyName(8, QStringLiteral("с")), QStringLiteral("С")); // Cyrillic
    EXPECT_EQ(hotKeyName(10, QString()), QStringLiteral("?"));
}

TEST(HotKeyText, NamesKeysThatTypeNothingByTheirLabel)
{
    EXPECT_EQ(hotKeyName(114, QString()), QStringLiteral("Ins"));
    EXPECT_EQ(hotKeyText(4096, hotKeyName(76, QString())), QStringLiteral("Ctrl+Enter"));
    EXPECT_EQ(hotKeyText(4096, hotKeyName(71, QString())), QStringLiteral("Ctrl+NumLock"));
    EXPECT_EQ(hotKeyName(71, QStringLiteral("x")), QStringLiteral("X"));
}

TEST(HotKeyText, StoresFourModifiersOnly)
{
    EXPECT_EQ(storedModifiers(Qt::MetaModifier), 256U);
    EXPECT_EQ(storedModifiers(Qt::ShiftModifier), 512U);
    EXPECT_EQ(storedModifiers(Qt::AltModifier), 2048U);
    EXPECT_EQ(storedModifiers(Qt::ControlModifier), 4096U);
    EXPECT_EQ(storedModifiers(Qt::AltModifier | Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier),
              2560U);
    EXPECT_EQ(storedModifiers(Qt::NoModifier), 0U);
}

} // namespace
} // namespace quelto
