// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace quelto {

/// A number in a settings file with which AppSettings ends the program.
struct OutOfRangeSetting {
    QString file;
    QString key;
    QString value;

    bool operator==(const OutOfRangeSetting&) const = default;
};

// These read the file without AppSettings, so that the program can tell the user before it ends.

std::optional<OutOfRangeSetting> findOutOfRangeSetting(const QString& path);
/// The language setting: "system" or a language's code.
QString storedLanguage(const QString& path);

} // namespace quelto
