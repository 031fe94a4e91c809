// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/ClipTier.h"

#include <QByteArrayView>
#include <QDateTime>
#include <QString>

#include <optional>

/// The grammar of clip file names, in both directions. The recorder writes
///
///     GAME - yyyy-MM-dd HH.mm.ss[ (MARK)][ [TIER SCORE] LABEL].mp4
///
/// and a renamed clip is "GAME - TITLE.EXTENSION". All functions are pure.
namespace quelto {

/// What a clip's name is composed from. The texts may hold characters that a file name must not have.
struct ClipNameParts {
    QString game;
    /// Local time at which the file is written.
    QDateTime date;
    /// The result of momentSuffix; none for a clip that the user saved.
    std::optional<QString> suffix;

    bool operator==(const ClipNameParts&) const = default;
};

/// The tier, score and label that an automatic clip carries in its name.
struct MomentMark {
    ClipTier tier;
    qint64 score = 0;
    QString label;
};

/// What a name says about a clip.
struct ParsedClipName {
    /// Nothing if the name has no " - "; the whole stem is the title then.
    std::optional<QString> game;
    QString title;
    std::optional<MomentMark> moment;
};

/// The sanitised game, " - " and the date. A sanitised text has "-" in place of "/" and ":", and no control characters.
/// A sanitised game has no leading dots, which would hide the file.
QString clipFileStem(const QString& game, const QDateTime& date);

/// The whole name with the extension "mp4". From mark 2 on, " (mark)" stands between date and suffix.
///
/// Shortens a name that is too long for a file system: first the end of the suffix, then the end of the game, never
/// within a character. The sidecar's name, which is longer, fits as well.
QString clipFileName(const ClipNameParts& parts, int mark = 1);

/// The parts with "-" in place of each character that FAT, exFAT and NTFS reject.
ClipNameParts portableClipNameParts(ClipNameParts parts);

/// "[TIER SCORE] LABEL", the suffix of an automatic clip.
QString momentSuffix(ClipTier tier, qint64 score, const QString& label);

/// The name of a clip that the user gives a title. The title is trimmed and sanitised; nothing if it is empty or has a
/// zero character.
std::optional<QString> renamedClipFileName(const QString& game, const QString& title, const QString& extension);

/// The name without its extension. A dot at the start, which hides a file, does not begin an extension.
QStringView stemOf(QStringView fileName);

/// The name of a clip's hidden sidecar.
QString sidecarFileName(const QString& clipFileName);
/// Whether a file system takes the name of the clip's sidecar, which is longer than the clip's own name. Takes names as
/// decodeFileName returns them.
bool hasRoomForSidecar(const QString& clipFileName);

/// Never fails. The extension is not part of the title.
ParsedClipName parseClipFileName(QStringView fileName);

/// Whether a name has a game, without parsing the rest.
bool clipFileNameHasGame(QStringView fileName);

/// The length of the date at the start of a title, 0 if there is none.
qsizetype dateLength(QStringView title);

/// Whether a title has one of the marks that the aspect export gives portrait pictures.
bool hasTallMark(QStringView title);

/// Whether a directory entry is taken for a clip: a video by its extension, in upper or lower case, and not hidden. The
/// name is in the file system's encoding.
bool isClipFileName(QByteArrayView fileName) noexcept;

} // namespace quelto
