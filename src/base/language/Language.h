// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace quelto {

/// The languages that all texts exist in. The texts in the code are Turkish.
enum class Language { tr, en, de, es, fr, pt, ru };

inline constexpr std::array AllLanguages{Language::tr, Language::en, Language::de, Language::es,
                                         Language::fr, Language::pt, Language::ru};

/// What the settings hold for it: "tr", "en" and so on.
QString rawValueOf(Language language);
std::optional<Language> languageFromRawValue(QStringView rawValue);
/// Its name in itself, for a list to choose from.
QString nativeNameOf(Language language);
/// "pt_BR": the country decides on dates and numbers.
QString localeIdOf(Language language);

/// The language for a setting. What is no raw value means the system's: the first of the preferred languages that we
/// have, told by its first two letters; English if there is none.
Language languageFor(const QString& setting, const QStringList& preferredLanguages);

/// The user's languages by the environment, the dearest first: LANGUAGE (a list), LC_ALL, LC_MESSAGES, LANG.
QStringList preferredLanguages();

} // namespace quelto
