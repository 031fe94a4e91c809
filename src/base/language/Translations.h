// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/Language.h"

#include <QByteArray>
#include <QHash>

namespace quelto {

/// The translation tables. A key is the Turkish text, in UTF-8.
class Translations {
public:
    using Texts = QHash<Language, QString>;
    using Table = QHash<QByteArray, Texts>;

    /// All texts of the program in every language but Turkish, whose texts are the keys.
    ///
    /// Parsed by the first call. Thread: any.
    static const Table& table();
    /// The Linux desktop's wording of the few texts that name places and keys of the platform, in every language
    /// including Turkish.
    static const Table& desktopTable();
    /// Whether table() has been called. For tests.
    static bool isTableBuilt();
};

/// Parses a table: rows end with line feeds, columns are separated by tabs, the key comes first, then the languages in
/// the given order. Rows with another number of columns are skipped; a later row replaces an earlier one of the same
/// key.
Translations::Table parseTranslations(const QByteArray& source, std::span<const Language> columns);

} // namespace quelto
