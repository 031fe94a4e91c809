// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/LanguageSwitcher.h"

#include "base/keys/HotKeyText.h"
#include "base/language/L10n.h"
#include "base/settings/AppSettings.h"
#include "ui/controls/KeyNames.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct Wording {
    const char* language;
    const char* cancel;
};

class LanguageSwitcherTest : public testing::Test {
protected:
    void TearDown() override { L10n::use(QStringLiteral("tr")); }

    static QString cancel() { return QCoreApplication::translate("QPlatformTheme", "Cancel"); }

    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
};

TEST_F(LanguageSwitcherTest, AppliesTheLanguageToQtTexts)
{
    const LanguageSwitcher language(QStringLiteral("de"));
    EXPECT_EQ(L10n::current(), Language::de);
    EXPECT_EQ(cancel(), QStringLiteral("Abbrechen"));
    for (const auto& wording :
         {Wording{"fr", "Annuler"}, Wording{"ru", "Отмена"}, Wording{"de", "Abbrechen"}, Wording{"es", "Cancelar"},
          Wording{"en", "Cancel"}, Wording{"pt", "Cancelar"}, Wording{"tr", "İptal"}}) {
        settings.setLanguage(QString::fromUtf8(wording.language));
        EXPECT_EQ(cancel(), QString::fromUtf8(wording.cancel)) << wording.language;
    }
}

TEST_F(LanguageSwitcherTest, NamesKeysInTheLanguage)
{
    const LanguageSwitcher language(QStringLiteral("de"));
    EXPECT_EQ(KeyNames::of(QStringLiteral("Ctrl+O")), QStringLiteral("Strg+O"));
    settings.setLanguage(QStringLiteral("en"));
    EXPECT_EQ(KeyNames::of(QStringLiteral("Ctrl+O")), QStringLiteral("Ctrl+O"));
    EXPECT_TRUE(KeyNames::of(QString()).isEmpty());
}

TEST_F(LanguageSwitcherTest, ChangesQtTextsBeforeTheLanguageIsAnnounced)
{
    QString inSlot;
    QObject::connect(&settings, &AppSettings::languageChanged, [&] { inSlot = cancel(); });
    const LanguageSwitcher language(settings.language());
    settings.setLanguage(QStringLiteral("fr"));
    EXPECT_EQ(inSlot, QStringLiteral("Annuler"));
}

TEST_F(LanguageSwitcherTest, WritesTheShortcutInTheKeyNamesOfTheLanguage)
{
    const LanguageSwitcher language(QStringLiteral("de"));
    constexpr auto AltShift = modifierBits::option + modifierBits::shift;
    EXPECT_EQ(hotKeyText(AltShift, QStringLiteral("C")), QStringLiteral("Alt+Umschalt+C"));
    EXPECT_EQ(hotKeyText(modifierBits::control, QStringLiteral("⌦")), QStringLiteral("Strg+Entf"));
    settings.setLanguage(QStringLiteral("fr"));
    EXPECT_EQ(hotKeyText(AltShift, QStringLiteral("C")), QStringLiteral("Alt+Maj+C"));
    settings.setLanguage(QStringLiteral("tr"));
    EXPECT_EQ(hotKeyText(AltShift, QStringLiteral("C")), QStringLiteral("Alt+Shift+C"));
}

} // namespace
} // namespace quelto
