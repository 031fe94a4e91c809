// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/Clip.h"

#include "base/language/L10n.h"
#include "base/language/T.h"

#include <QFile>

#include <fcntl.h>

namespace quelto {

namespace {

constexpr QStringView Separator = u" - ";
constexpr qint64 NanosecondsInAMillisecond = 1'000'000;

bool isDigit(QChar letter)
{
    return letter >= u'0' && letter <= u'9';
}

/// The length of the date at the text's beginning, 0 if there is none.
qsizetype dateLength(QStringView text)
{
    constexpr QStringView Form = u"dddd-dd-dd dd.dd.dd";
    const auto fits = [](QChar letter, QChar wanted) { return wanted == u'd' ? isDigit(letter) : letter == wanted; };
    return text.size() >= Form.size() && std::ranges::equal(text.first(Form.size()), Form, fits) ? Form.size() : 0;
}

/// The name of a file without its last extension.
QStringView stemOf(QStringView path)
{
    const auto name = path.sliced(path.lastIndexOf(u'/') + 1);
    const auto dot = name.lastIndexOf(u'.');
    return dot < 0 ? name : name.first(dot);
}

struct MomentMarker {
    ClipTier tier;
    qint64 score;
    QString label;
};

/// What stands behind a bracket if it is "TIER SCORE] LABEL" up to the end; a label is one line.
std::optional<MomentMarker> momentMarkIn(QStringView text)
{
    const auto blank = text.indexOf(u' ');
    const auto tier = blank < 0 ? std::nullopt : tierFromTag(text.first(blank).toString());
    if (!tier) {
        return std::nullopt;
    }
    text = text.sliced(blank + 1);
    const auto digits = std::ranges::find_if_not(text, isDigit) - text.begin();
    const auto label = text.sliced(digits);
    constexpr QStringView Between = u"] ";
    if (digits == 0 || !label.startsWith(Between) || label.size() == Between.size() || label.contains(u'\n')) {
        return std::nullopt;
    }
    return MomentMarker{
        .tier = *tier, .score = text.first(digits).toLongLong(), .label = label.sliced(Between.size()).toString()};
}

std::optional<MomentMarker> firstMomentMarker(QStringView title)
{
    for (auto at = title.indexOf(u'['); at >= 0; at = title.indexOf(u'[', at + 1)) {
        if (auto found = momentMarkIn(title.sliced(at + 1))) {
            return found;
        }
    }
    return std::nullopt;
}

} // namespace

Clip::Clip(const QString& filePath)
    : Clip(filePath, tryFileStat(AT_FDCWD, QFile::encodeName(filePath).constData()))
{
}

Clip::Clip(const QString& filePath, const std::optional<FileStat>& facts)
    : path(filePath)
    , date(facts ? QDateTime::fromMSecsSinceEpoch(facts->createdAt / NanosecondsInAMillisecond)
                 : QDateTime::currentDateTime())
    , size(facts ? facts->size : 0)
{
    const auto name = stemOf(path);
    if (const auto at = name.indexOf(Separator); at >= 0) {
        game = name.first(at).toString();
        title = name.sliced(at + Separator.size()).toString();
    } else {
        game = T("Diğer");
        title = name.toString();
    }
    if (const auto mark = firstMomentMarker(title)) {
        autoTier = mark->tier;
        autoScore = mark->score;
        autoLabel = mark->label;
    }
}

bool Clip::hasOwnGame() const
{
    return stemOf(path).contains(Separator);
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
        return T("{0} klibi", game) + title.mid(length);
    }
    return title;
}

bool Clip::isTall() const
{
    return title.contains(QStringLiteral("(9x16)")) || title.contains(QStringLiteral("(4x5)"));
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
