// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/Language.h"

#include <QByteArray>
#include <QHash>

namespace quelto {

/// What a key reads in other languages. A key is the Turkish text, in UTF-8.
class Translations {
public:
    using Texts = QHash<Language, QString>;
    using Table = QHash<QByteArray, Texts>;

    /// All texts of the program: every language but Turkish, whose texts are the keys.
    ///
    /// Parsed at the first call. Thread: any.
    static const Table& table();
    /// Wordings of this desktop, for the few texts that speak of the platform's own places and keys: every language,
    /// Turkish too.
    static const Table& desktopTable();
    /// Whether table() was ever called.
    static bool isTableBuilt();
};

/// A table from its source: rows separated by line feeds, columns by tabs, the key first, the languages in that order
/// behind it. A row with another number of columns is skipped; a later row replaces an earlier one of the same key.
Translations::Table parsedTranslations(const QByteArray& source, std::span<const Language> columns);

} // namespace quelto
