// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/Language.h"

#include <QDateTime>
#include <QLocale>
#include <QString>

namespace quelto {

/// The current language, and formatting that depends on it. Turkish, the language of the translation keys, until use()
/// is called.
///
/// Thread: any.
class L10n {
public:
    /// Sets the language from the setting: a language's raw value, or anything else for the system language.
    static void use(const QString& setting);

    static Language current();
    static QLocale locale();
    /// Formats a date in local time with the words and field order of the language. The template lists the fields in
    /// the letters of Unicode date patterns ("dMMMyyyyHHmm"); their order does not matter.
    static QString date(const QDateTime& date, const QString& dateTemplate);
    /// Formats a file size in decimal units with at most two decimals: "312 kB", "12,4 MB", "1,25 GB". Units: bytes.
    static QString fileSize(qint64 bytes);
    /// Converts to upper case by the rules of the language: Turkish distinguishes dotted and dotless i.
    static QString upperCased(const QString& text);
};

} // namespace quelto
