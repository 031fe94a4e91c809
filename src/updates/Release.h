// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace quelto {

/// A published version of Quelto. The texts come from outside of the program and may contain anything.
struct Release {
    /// Dotted, for example 1.4.2.
    QString version;
    /// One change each, in the order to show.
    QStringList notes;
    /// The page or file to download.
    QString url;

    bool operator==(const Release&) const = default;
};

/// The release in a JSON object with the keys of the struct; nothing unless all three are present and have their types.
std::optional<Release> decodeRelease(const QByteArray& json);

/// Whether the version is newer than the other one. Compares the numbers between the dots one by one. A missing number,
/// a piece that is not a decimal number, and one that does not fit 64 bits count as 0.
bool isNewer(const QString& version, const QString& other);

/// The text without characters that are invisible or begin a new line, so that it can be part of a sentence.
QString visibleLine(const QString& text);

} // namespace quelto
