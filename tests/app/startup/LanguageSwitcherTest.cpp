// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/LanguageSwitcher.h"

#include "base/language/L10n.h"
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
    settings.setLanguage(QStringLiteral("de"));
    L10n::use(QStringLiteral("tr"));
    const LanguageSwitcher language(settings);
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
    const LanguageSwitcher language(settings);
    settings.setLanguage(QStringLiteral("de"));
    EXPECT_EQ(KeyNames::of(QStringLiteral("Ctrl+O")), QStringLiteral("Strg+O"));
    settings.setLanguage(QStringLiteral("en"));
    EXPECT_EQ(KeyNames::of(QStringLiteral("Ctrl+O")), QStringLiteral("Ctrl+O"));
    EXPECT_TRUE(KeyNames::of(QString()).isEmpty());
}

} // namespace
} // namespace quelto
