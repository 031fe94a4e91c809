// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace quelto {

/// The supported languages. The texts in the code are Turkish.
enum class Language { tr, en, de, es, fr, pt, ru };

inline constexpr std::array AllLanguages{Language::tr, Language::en, Language::de, Language::es,
                                         Language::fr, Language::pt, Language::ru};

/// The value stored in the settings: "tr", "en" and so on.
QString rawValueOf(Language language);
std::optional<Language> languageFromRawValue(QStringView rawValue);
/// The name of the language in that language.
QString nativeNameOf(Language language);
/// A locale such as "pt_BR"; the country determines date and number formats.
QString localeIdOf(Language language);

/// The language for a setting. A setting that is not a raw value selects the system language: the first supported one
/// of the preferred languages, matched by its first two letters; English if none is supported.
Language languageFor(const QString& setting, const QStringList& preferredLanguages);

/// The user's languages from the environment, most preferred first: LANGUAGE (a list), LC_ALL, LC_MESSAGES, LANG.
QStringList preferredLanguages();

} // namespace quelto
