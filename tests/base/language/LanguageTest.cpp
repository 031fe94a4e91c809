// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"

#include <QTimeZone>

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(Language, HasRawValueNativeNameAndLocale)
{
    QStringList rows;
    for (const auto language : AllLanguages) {
        rows.append(rawValueOf(language) + u' ' + nativeNameOf(language) + u' ' + localeIdOf(language));
    }
    EXPECT_EQ(rows.join(u'|'),
              QStringLiteral("tr Türkçe tr_TR|en English en_US|de Deutsch de_DE|es Español es_ES|fr Français fr_FR|"
                             "pt Português pt_BR|ru Русский ru_RU"));
}

struct Choice {
    const char* name;
    const char* setting;
    QStringList preferred;
    Language expected;
};

class LanguageChoice : public testing::TestWithParam<Choice> { };

TEST_P(LanguageChoice, ComesFromSettingThenSystem)
{
    EXPECT_EQ(languageFor(QString::fromUtf8(GetParam().setting), GetParam().preferred), GetParam().expected);
}

QStringList list(const char* words)
{
    return QString::fromUtf8(words).split(u' ', Qt::SkipEmptyParts);
}

INSTANTIATE_TEST_SUITE_P(
    Language, LanguageChoice,
    testing::Values(Choice{"Chosen", "fr", list("de_DE"), Language::fr},
                    Choice{"ChosenTurkish", "tr", list("de_DE"), Language::tr},
                    Choice{"FirstSupportedSystemLanguage", "system", list("de-DE tr-TR"), Language::de},
                    Choice{"SkipsUnsupportedLanguages", "system", list("ja_JP.UTF-8 ru_RU.UTF-8"), Language::ru},
                    Choice{"OnlyUnsupportedLanguages", "system", list("ja-JP ko-KR"), Language::en},
                    Choice{"NoSystemLanguage", "system", {}, Language::en},
                    Choice{"CLocale", "system", list("C.UTF-8"), Language::en},
                    Choice{"Brazil", "system", list("pt-BR"), Language::pt},
                    Choice{"Britain", "system", list("en-GB de"), Language::en},
                    Choice{"IgnoresSystemLanguageInUpperCase", "system", list("DE_de"), Language::en},
                    Choice{"UnknownSettingMeansSystem", "klingon", list("es_AR"), Language::es},
                    Choice{"EmptySettingMeansSystem", "", {}, Language::en},
                    Choice{"SettingInUpperCaseMeansSystem", "FR", list("es"), Language::es}),
    [](const auto& choice) { return choice.param.name; });

/// Clears the language variables and restores them afterwards.
class PreferredLanguages : public testing::Test {
protected:
    static constexpr std::array Variables{"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};

    PreferredLanguages()
    {
        for (const auto* variable : Variables) {
            m_before.append(qEnvironmentVariableIsSet(variable) ? qgetenv(variable) : QByteArray());
            qunsetenv(variable);
        }
    }
    ~PreferredLanguages() override
    {
        for (std::size_t i = 0; i < Variables.size(); ++i) {
            qputenv(Variables[i], m_before[static_cast<qsizetype>(i)]);
        }
    }

private:
    QByteArrayList m_before;
};

TEST_F(PreferredLanguages, AreReadFromEnvironmentInOrder)
{
    qputenv("LANG", "de_DE.UTF-8");
    qputenv("LC_MESSAGES", "fr_FR.UTF-8");
    qputenv("LC_ALL", "C");
    qputenv("LANGUAGE", "es:ru");
    EXPECT_EQ(preferredLanguages().join(u' '), QStringLiteral("es ru C fr_FR.UTF-8 de_DE.UTF-8"));
}

TEST_F(PreferredLanguages, SkipEmptyVariables)
{
    qputenv("LANGUAGE", "");
    qputenv("LC_ALL", "");
    qputenv("LANG", "pt_BR.UTF-8");
    EXPECT_EQ(preferredLanguages(), QStringList(QStringLiteral("pt_BR.UTF-8")));
}

class L10nTest : public testing::Test {
protected:
    ~L10nTest() override { L10n::use(QStringLiteral("tr")); }
};

TEST_F(L10nTest, LocaleFollowsLanguage)
{
    L10n::use(QStringLiteral("pt"));
    EXPECT_EQ(L10n::current(), Language::pt);
    EXPECT_EQ(L10n::locale().name(), QStringLiteral("pt_BR"));
}

TEST_F(L10nTest, FormatsDatesInTheOrderOfTheLanguage)
{
    const QDateTime date(QDate(2026, 3, 1), QTime(20, 5, 7));
    struct Case {
        const char* language;
        const char* day;
        const char* time;
    };
    for (const auto& each :
         {Case{"tr", "1 Mart 2026 Pazar", "20:05"}, Case{"en", "Sunday, March 1, 2026", "20:05"},
          Case{"de", "Sonntag, 1. März 2026", "20:05"}, Case{"es", "domingo, 1 de marzo de 2026", "20:05"},
          Case{"fr", "dimanche 1 mars 2026", "20:05"}, Case{"pt", "domingo, 1 de março de 2026", "20:05"},
          Case{"ru", "воскресенье, 1 марта 2026 г.", "20:05"}}) {
        L10n::use(QString::fromUtf8(each.language));
        // ICU's data determines the kind of space before "г.".
        EXPECT_EQ(L10n::date(date, QStringLiteral("EEEEdMMMMyyyy")).replace(QChar(0x202F), u' '),
                  QString::fromUtf8(each.day));
        EXPECT_EQ(L10n::date(date, QStringLiteral("H:mm")), QString::fromUtf8(each.time));
    }
}

TEST_F(L10nTest, FormatsTimesInTheCurrentTimeZone)
{
    const auto before = qgetenv("TZ");
    const bool wasSet = qEnvironmentVariableIsSet("TZ");
    const auto moment = QDateTime(QDate(2026, 3, 1), QTime(20, 5, 7), QTimeZone::utc());
    L10n::use(QStringLiteral("de"));
    struct Place {
        const char* zone;
        const char* time;
    };
    for (const auto& place : {Place{"CET-1", "1.3., 21:05"}, Place{"JST-9", "2.3., 05:05"},
                              Place{"EST5", "1.3., 15:05"}, Place{"CET-1", "1.3., 21:05"}}) {
        qputenv("TZ", place.zone);
        EXPECT_EQ(L10n::date(moment, QStringLiteral("dMHHmm")), QString::fromUtf8(place.time)) << place.zone;
    }
    if (wasSet) {
        qputenv("TZ", before);
    } else {
        qunsetenv("TZ");
    }
}

TEST_F(L10nTest, UpperCaseFollowsTheLanguage)
{
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(L10n::upperCased(QStringLiteral("iyi ıssız")), QStringLiteral("İYİ ISSIZ"));
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(L10n::upperCased(QStringLiteral("epic")), QStringLiteral("EPIC"));
    L10n::use(QStringLiteral("de"));
    EXPECT_EQ(L10n::upperCased(QStringLiteral("groß")), QStringLiteral("GROSS"));
}

} // namespace
} // namespace quelto
