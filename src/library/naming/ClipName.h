// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace quelto {

/// The parts of a clip file's name, before they are made fit for a file system.
struct ClipNameParts {
    QString game;
    /// Local time at which the file is written.
    QDateTime date;
    /// Tier, score and label of a clip that a moment made.
    std::optional<QString> suffix;
};

/// The name's beginning: the sanitised game, " - " and the date in the form that Clip reads back.
QString clipFileStem(const QString& game, const QDateTime& date);

/// The whole name with the extension "mp4". From mark 2 on, " (mark)" stands between date and suffix.
///
/// A name that no file system would take is shortened at the end of the suffix, then of the game, never in the middle
/// of a character; the sidecar's name, six bytes longer, fits as well.
QString clipFileName(const ClipNameParts& parts, int mark = 1);

} // namespace quelto
