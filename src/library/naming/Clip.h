// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileStat.h"
#include "moments/scoring/ClipTier.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace quelto {

/// One clip file, described by its name, date and size. The video is not opened.
struct Clip {
    /// Never fails. A name without " - " has the translated word for "Other" as its game, and the whole stem as its
    /// title.
    explicit Clip(const QString& path);
    /// Takes attributes that were read before; nothing if there are none.
    Clip(const QString& path, const std::optional<FileStat>& stat);

    QString path;
    QString game;
    QString title;
    /// The creation time, in UTC, so that it stays the same instant when the time zone changes. A copy on another disk
    /// keeps its date, because an earlier modification time counts. The current time if the file system gives none.
    QDateTime date;
    /// Units: bytes. 0 if the file system gives none.
    qint64 size = 0;
    std::optional<ClipTier> autoTier;
    qint64 autoScore = 0;
    std::optional<QString> autoLabel;

    bool operator==(const Clip&) const = default;

    /// Whether the game comes from the name; otherwise it is a word of the current language.
    bool hasOwnGame() const;

    /// Whether the title starts with the date that the recorder wrote.
    bool hasDefaultTitle() const;
    /// The title for lists: the moment's label, "GAME clip" for a default title, or the user's title.
    QString displayTitle() const;
    /// The title on screens: displayTitle(), or the file's name if that is blank, as for "a - .mp4".
    QString visibleTitle() const;
    /// Whether the picture is in portrait format, by the mark that the aspect export writes into the name.
    bool isTall() const;
    /// In decimal units and the language's number format: "12,4 MB".
    QString sizeText() const;
    /// Hour and minute in the current time zone and the language's format.
    QString timeText() const;
};

} // namespace quelto
