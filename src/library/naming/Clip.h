// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileStat.h"
#include "moments/scoring/ClipTier.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace quelto {

/// One clip file as its name and two attributes tell it; the video is not opened.
struct Clip {
    /// Never fails: a name without " - " belongs to the game "Other" and is a title as a whole.
    explicit Clip(const QString& path);
    /// The same of a file that was looked at already.
    Clip(const QString& path, const std::optional<FileStat>& stat);

    QString path;
    QString game;
    QString title;
    /// When it was made: a copy on another disk keeps the day by its modification time. The present time if the file
    /// system tells none.
    QDateTime date;
    /// Units: bytes; 0 if the file system tells none.
    qint64 size = 0;
    std::optional<ClipTier> autoTier;
    qint64 autoScore = 0;
    std::optional<QString> autoLabel;

    bool operator==(const Clip&) const = default;

    /// Whether the name has a game in it; otherwise its game is a word of the present language.
    bool hasOwnGame() const;

    /// The title still begins with the date that the recorder gave it.
    bool hasDefaultTitle() const;
    /// What a list shows: the moment's headline, a wording for an unnamed clip, or the title that the user gave.
    QString displayTitle() const;
    /// The aspect export marks upright pictures in the name.
    bool isTall() const;
    /// In decimal units and the language's numbers: "12,4 MB".
    QString sizeText() const;
    /// Hour and minute in the language's order.
    QString timeText() const;
};

} // namespace quelto
