// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/T.h"

#include "base/language/L10n.h"
#include "base/language/Translations.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

class TranslatedT : public testing::Test {
protected:
    ~TranslatedT() override { L10n::use(QStringLiteral("tr")); }
};

// Must be the first test: it checks that nothing has loaded the table yet.
TEST(T, TurkishDoesNotLoadTheTable)
{
    EXPECT_EQ(T("Oto klip ({0}): {1}", QStringLiteral("Efsane"), 7), QStringLiteral("Oto klip (Efsane): 7"));
    EXPECT_FALSE(Translations::isTableBuilt());
}

TEST(T, ReturnsKeyWithPlaceholdersFilledInTurkish)
{
    EXPECT_EQ(T("● Kayıtta — son {0} sn", 30), QStringLiteral("● Kayıtta — son 30 sn"));
    EXPECT_EQ(T("{0} klip"), QStringLiteral("{0} klip"));
}

TEST(T, FillsEveryOccurrenceAndIgnoresExtraArguments)
{
    EXPECT_EQ(T("{1} {0} {1}", QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")), QStringLiteral("b a b"));
    EXPECT_EQ(T("{0} {1}", QStringLiteral("a")), QStringLiteral("a {1}"));
}

TEST(T, FillsPlaceholdersInsideArguments)
{
    EXPECT_EQ(T("{0}!", QStringLiteral("{1}"), QStringLiteral("x")), QStringLiteral("x!"));
}

TEST(T, FormatsNumbersWithoutGrouping)
{
    EXPECT_EQ(T("{0}", 1500), QStringLiteral("1500"));
}

TEST_F(TranslatedT, ReturnsTextInCurrentLanguage)
{
    struct Case {
        const char* language;
        const char* text;
    };
    for (const auto& each :
         {Case{"tr", "Son 30 sn • 1500 MB"}, Case{"en", "Last 30 s • 1500 MB"}, Case{"de", "Letzte 30 s • 1500 MB"},
          Case{"es", "Últimos 30 s • 1500 MB"}, Case{"fr", "30 dernières s • 1500 Mo"},
          Case{"pt", "Últimos 30 s • 1500 MB"}, Case{"ru", "Последние 30 с • 1500 МБ"}}) {
        L10n::use(QString::fromUtf8(each.language));
        EXPECT_EQ(T("Son {0} sn • {1} MB", 30, 1500), QString::fromUtf8(each.text));
    }
}

TEST_F(TranslatedT, KeyWithoutRowIsReturnedUnchanged)
{
    L10n::use(QStringLiteral("de"));
    EXPECT_EQ(T("Böyle bir satır yok: {0}", 3), QStringLiteral("Böyle bir satır yok: 3"));
    EXPECT_EQ(T(""), QString());
}

TEST_F(TranslatedT, PlaceholderWithoutArgumentStays)
{
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(T("{0} klip"), QStringLiteral("{0} clips"));
}

TEST_F(TranslatedT, DesktopTextsTakePrecedence)
{
    const auto* const key = "Finder'da Göster";
    EXPECT_EQ(TOnDesktop(key), QStringLiteral("Klasörde Göster"));
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(T(key), QStringLiteral("Show in Finder"));
    EXPECT_EQ(TOnDesktop(key), QStringLiteral("Show in Folder"));
    EXPECT_EQ(TOnDesktop("Klip kaydedildi"), QStringLiteral("Clip saved"));
    EXPECT_EQ(TOnDesktop("Son {0} sn • {1} MB", 30, 7), QStringLiteral("Last 30 s • 7 MB"));
}

TEST(Translations, ParsesRowsAndSkipsMalformedOnes)
{
    constexpr std::array columns{Language::en, Language::de};
    const auto table = parseTranslations("bir\tone\teins\n\nkısa\tshort\nuzun\ta\tb\tc\nbir\tuno\tun", columns);
    ASSERT_EQ(table.size(), 1) << "rows with too few or too many columns are skipped";
    EXPECT_EQ(table["bir"][Language::en], QStringLiteral("uno")) << "a later row replaces an earlier one";
    EXPECT_EQ(table["bir"][Language::de], QStringLiteral("un"));
}

} // namespace
} // namespace quelto
