// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/Language.h"

#include <algorithm>

namespace quelto {

namespace {

struct LanguageRow {
    Language language;
    QStringView rawValue;
    QStringView nativeName;
    QStringView localeId;
};

constexpr std::array Rows{
    LanguageRow{Language::tr, u"tr", u"Türkçe", u"tr_TR"},   LanguageRow{Language::en, u"en", u"English", u"en_US"},
    LanguageRow{Language::de, u"de", u"Deutsch", u"de_DE"},  LanguageRow{Language::es, u"es", u"Español", u"es_ES"},
    LanguageRow{Language::fr, u"fr", u"Français", u"fr_FR"}, LanguageRow{Language::pt, u"pt", u"Português", u"pt_BR"},
    LanguageRow{Language::ru, u"ru", u"Русский", u"ru_RU"},
};

const LanguageRow& rowOf(Language language)
{
    return *std::ranges::find(Rows, language, &LanguageRow::language);
}

} // namespace

QString rawValueOf(Language language)
{
    return rowOf(language).rawValue.toString();
}

std::optional<Language> languageFromRawValue(QStringView rawValue)
{
    const auto* const row = std::ranges::find(Rows, rawValue, &LanguageRow::rawValue);
    return row == Rows.end() ? std::nullopt : std::optional(row->language);
}

QString nativeNameOf(Language language)
{
    return rowOf(language).nativeName.toString();
}

QString localeIdOf(Language language)
{
    return rowOf(language).localeId.toString();
}

Language languageFor(const QString& setting, const QStringList& preferredLanguages)
{
    if (const auto chosen = languageFromRawValue(setting)) {
        return *chosen;
    }
    for (const auto& preferred : preferredLanguages) {
        if (const auto known = languageFromRawValue(QStringView(preferred).left(2))) {
            return *known;
        }
    }
    return Language::en;
}

QStringList preferredLanguages()
{
    auto languages = qEnvironmentVariable("LANGUAGE").split(u':');
    for (const auto* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        languages.append(qEnvironmentVariable(variable));
    }
    languages.removeAll(QString());
    return languages;
}

} // namespace quelto
