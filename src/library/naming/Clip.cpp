// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/Clip.h"

#include "base/files/FileName.h"
#include "base/language/L10n.h"
#include "base/language/T.h"
#include "library/naming/ClipGame.h"
#include "library/naming/ClipName.h"

#include <QTimeZone>

#include <fcntl.h>

namespace quelto {

namespace {

constexpr qint64 NanosecondsPerMillisecond = 1'000'000;

// The later versions of Qt warn about the name that the earlier ones have.
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
constexpr auto Utc = QTimeZone::UTC;
#else
constexpr auto Utc = Qt::UTC;
#endif

QStringView fileNameOf(QStringView path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

} // namespace

Clip::Clip(const QString& filePath)
    : Clip(filePath, tryFileStat(AT_FDCWD, encodeFileName(filePath).constData()))
{
}

Clip::Clip(const QString& filePath, const std::optional<FileStat>& stat)
    : path(filePath)
    , date(stat ? QDateTime::fromMSecsSinceEpoch(stat->createdAt / NanosecondsPerMillisecond, Utc)
                : QDateTime::currentDateTimeUtc())
    , size(stat ? stat->size : 0)
{
    const auto name = parseClipFileName(displayFileName(fileNameOf(path).toString()));
    game = name.game ? *name.game : ClipGame::none().title();
    title = name.title;
    if (name.moment) {
        autoTier = name.moment->tier;
        autoScore = name.moment->score;
        autoLabel = name.moment->label;
    }
}

bool Clip::hasOwnGame() const
{
    return clipFileNameHasGame(fileNameOf(path));
}

bool Clip::hasDefaultTitle() const
{
    return dateLength(title) > 0;
}

QString Clip::displayTitle() const
{
    if (autoLabel) {
        return *autoLabel;
    }
    if (const auto length = dateLength(title); length > 0) {
        // The language may have changed since the clip was read.
        return T("{0} klibi", hasOwnGame() ? game : ClipGame::none().title()) + title.mid(length);
    }
    return title;
}

QString Clip::visibleTitle() const
{
    const auto shown = displayTitle();
    return shown.trimmed().isEmpty() ? displayFileName(fileNameOf(path).toString()) : shown;
}

bool Clip::isTall() const
{
    return hasTallMark(title);
}

QString Clip::sizeText() const
{
    return L10n::fileSize(size);
}

QString Clip::timeText() const
{
    return L10n::date(date, QStringLiteral("H:mm"));
}

} // namespace quelto
