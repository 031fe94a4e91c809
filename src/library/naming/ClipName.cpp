// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipName.h"

namespace quelto {

namespace {

// NAME_MAX of the usual file systems is 255 bytes; the sidecar adds a dot in front and ".json" behind.
constexpr qsizetype MostBytesOfAName = 255 - 6;

QString sanitised(QString text)
{
    text.replace(u'/', u'-').replace(u':', u'-');
    // No file system takes a zero byte.
    text.remove(QChar(u'\0'));
    return text;
}

/// Takes whole characters off the end until the text is the given number of bytes shorter, or empty.
QString shortenedBy(QString text, qsizetype bytes)
{
    const auto target = text.toUtf8().size() - bytes;
    while (!text.isEmpty() && text.toUtf8().size() > target) {
        text.chop(text.back().isLowSurrogate() && text.size() > 1 ? 2 : 1);
    }
    return text.trimmed();
}

} // namespace

QString clipFileStem(const QString& game, const QDateTime& date)
{
    return sanitised(game) + QStringLiteral(" - ") + date.toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
}

QString clipFileName(const ClipNameParts& parts, int mark)
{
    auto game = parts.game;
    auto suffix = sanitised(parts.suffix.value_or(QString()));
    const auto name = [&] {
        return clipFileStem(game, parts.date) + (mark > 1 ? QStringLiteral(" (%1)").arg(mark) : QString()) +
            (suffix.isEmpty() ? QString() : u' ' + suffix) + QStringLiteral(".mp4");
    };
    const auto excess = [&] { return name().toUtf8().size() - MostBytesOfAName; };
    if (excess() > 0) {
        suffix = shortenedBy(suffix, excess());
    }
    if (excess() > 0) {
        game = shortenedBy(game, excess());
    }
    return name();
}

} // namespace quelto
