// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipName.h"

#include "base/files/FileName.h"

#include <array>
#include <climits>

namespace quelto {

namespace {

constexpr QStringView Separator = u" - ";
constexpr std::array<QByteArrayView, 3> VideoExtensions{"mp4", "mov", "m4v"};

QString withoutPathCharacters(QString text)
{
    return text.replace(u'/', u'-').replace(u':', u'-');
}

QString sanitised(const QString& text)
{
    return withoutPathCharacters(text).removeIf([](QChar each) { return each.category() == QChar::Other_Control; });
}

/// Leading dots would hide the file, also from the library.
QString withoutLeadingDots(const QString& text)
{
    const auto first = std::ranges::find_if(text, [](QChar each) { return each != u'.'; });
    const auto rest = text.sliced(first - text.begin());
    return rest.isEmpty() && !text.isEmpty() ? QStringLiteral("-") : rest;
}

QString sanitisedGame(const QString& game)
{
    return withoutLeadingDots(sanitised(game));
}

/// Replaces what FAT, exFAT and NTFS reject and sanitised() keeps.
void makePortable(QString& text)
{
    constexpr QStringView Rejected = u"?*\"<>|\\";
    std::ranges::replace_if(
        text, [Rejected](QChar each) { return Rejected.contains(each); }, u'-');
}

/// Removes whole characters from the end until the text is the given number of bytes shorter, or empty.
QString shortenedBy(QString text, qsizetype bytes)
{
    const auto target = text.toUtf8().size() - bytes;
    while (!text.isEmpty() && text.toUtf8().size() > target) {
        text.chop(text.back().isLowSurrogate() && text.size() > 1 ? 2 : 1);
    }
    return text.trimmed();
}

bool isDigit(QChar letter)
{
    return letter >= u'0' && letter <= u'9';
}

/// Parses the text behind a bracket if it is "TIER SCORE] LABEL" up to the end; a label is one line.
std::optional<MomentMark> parseMomentMark(QStringView text)
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
    return MomentMark{
        .tier = *tier, .score = text.first(digits).toLongLong(), .label = label.sliced(Between.size()).toString()};
}

std::optional<MomentMark> firstMomentMark(QStringView title)
{
    for (auto at = title.indexOf(u'['); at >= 0; at = title.indexOf(u'[', at + 1)) {
        if (auto mark = parseMomentMark(title.sliced(at + 1))) {
            return mark;
        }
    }
    return std::nullopt;
}

} // namespace

QString clipFileStem(const QString& game, const QDateTime& date)
{
    return sanitisedGame(game).append(Separator).append(date.toString(QStringLiteral("yyyy-MM-dd HH.mm.ss")));
}

QString clipFileName(const ClipNameParts& parts, int mark)
{
    auto game = sanitisedGame(parts.game);
    auto suffix = sanitised(parts.suffix.value_or(QString()));
    const auto name = [&] {
        return clipFileStem(game, parts.date) + (mark > 1 ? QStringLiteral(" (%1)").arg(mark) : QString()) +
            (suffix.isEmpty() ? QString() : u' ' + suffix) + QStringLiteral(".mp4");
    };
    const auto excess = [&] { return sidecarFileName(name()).toUtf8().size() - NAME_MAX; };
    if (excess() > 0) {
        suffix = shortenedBy(suffix, excess());
    }
    if (excess() > 0) {
        game = shortenedBy(game, excess());
    }
    return name();
}

ClipNameParts portableClipNameParts(ClipNameParts parts)
{
    makePortable(parts.game);
    if (parts.suffix) {
        makePortable(*parts.suffix);
    }
    return parts;
}

QString momentSuffix(ClipTier tier, qint64 score, const QString& label)
{
    return QStringLiteral("[%1 %2] ").arg(tagOf(tier)).arg(score) + label;
}

std::optional<QString> renamedClipFileName(const QString& game, const QString& title, const QString& extension)
{
    const auto text = withoutPathCharacters(title.trimmed());
    if (text.isEmpty() || text.contains(QChar(u'\0'))) {
        return std::nullopt;
    }
    return QString(game).append(Separator).append(text).append(u'.').append(extension);
}

QStringView stemOf(QStringView fileName)
{
    const auto dot = fileName.lastIndexOf(u'.');
    return dot <= 0 ? fileName : fileName.first(dot);
}

QString sidecarFileName(const QString& clipFileName)
{
    return u'.' + clipFileName + QStringLiteral(".json");
}

bool hasRoomForSidecar(const QString& clipFileName)
{
    return encodeFileName(sidecarFileName(clipFileName)).size() <= NAME_MAX;
}

ParsedClipName parseClipFileName(QStringView fileName)
{
    ParsedClipName parsed;
    const auto stem = stemOf(fileName);
    if (const auto at = stem.indexOf(Separator); at >= 0) {
        parsed.game = stem.first(at).toString();
        parsed.title = stem.sliced(at + Separator.size()).toString();
    } else {
        parsed.title = stem.toString();
    }
    parsed.moment = firstMomentMark(parsed.title);
    return parsed;
}

bool clipFileNameHasGame(QStringView fileName)
{
    return stemOf(fileName).contains(Separator);
}

qsizetype dateLength(QStringView title)
{
    constexpr QStringView Form = u"dddd-dd-dd dd.dd.dd";
    const auto fits = [](QChar letter, QChar form) { return form == u'd' ? isDigit(letter) : letter == form; };
    return title.size() >= Form.size() && std::ranges::equal(title.first(Form.size()), Form, fits) ? Form.size() : 0;
}

bool hasTallMark(QStringView title)
{
    return title.contains(u"(9x16)") || title.contains(u"(4x5)");
}

bool isClipFileName(QByteArrayView fileName) noexcept
{
    const auto dot = fileName.lastIndexOf('.');
    if (dot <= 0 || fileName.front() == '.') {
        return false;
    }
    const auto extension = fileName.sliced(dot + 1);
    return std::ranges::any_of(VideoExtensions, [extension](QByteArrayView each) {
        return each.compare(extension, Qt::CaseInsensitive) == 0;
    });
}

} // namespace quelto
