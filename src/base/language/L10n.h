// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/Language.h"

#include <QDateTime>
#include <QLocale>
#include <QString>

namespace quelto {

/// The language now in force, and what beside the texts depends on it. Until a setting is told it is Turkish, the
/// language of the keys.
///
/// Thread: any.
class L10n {
public:
    /// What the settings hold: a language's raw value, or anything else for the system's.
    static void use(const QString& setting);

    static Language current();
    static QLocale locale();
    /// The date in the words and the order of the language. The template tells which parts are wanted, in the letters
    /// of Unicode's date patterns ("dMMMyyyyHHmm"); their order in it means nothing. Local time.
    static QString date(const QDateTime& date, const QString& dateTemplate);
    /// A file's size in decimal units, as exact as one cares to know: "312 kB", "12,4 MB", "1,25 GB". Units: bytes.
    static QString fileSize(qint64 bytes);
    /// In capitals as the language writes them: Turkish has two kinds of i.
    static QString upperCased(const QString& text);
};

} // namespace quelto
