// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/Clip.h"

#include "app/language/T.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace quelto {

namespace {

const QRegularExpression& datePattern()
{
    static const QRegularExpression pattern(QStringLiteral(R"(^\d{4}-\d{2}-\d{2} \d{2}\.\d{2}\.\d{2})"));
    return pattern;
}

const QRegularExpression& momentPattern()
{
    static const QRegularExpression pattern(QStringLiteral(R"(\[(EFSANE|ORTA|BASIT) (\d+)\] (.+)$)"));
    return pattern;
}

/// The earlier of the times of birth and of the last change; not every file system knows a birth.
QDateTime creationDate(const QFileInfo& file)
{
    const auto birth = file.birthTime();
    const auto change = file.lastModified();
    if (birth.isValid() && change.isValid()) {
        return std::min(birth, change);
    }
    return change.isValid() ? change : QDateTime::currentDateTime();
}

} // namespace

Clip::Clip(const QString& filePath)
    : path(filePath)
{
    const QFileInfo file(filePath);
    date = creationDate(file);
    size = file.size();
    const auto name = file.completeBaseName();
    const auto separator = QStringLiteral(" - ");
    if (const auto at = name.indexOf(separator); at >= 0) {
        game = name.left(at);
        title = name.mid(at + separator.size());
    } else {
        game = T("Diğer");
        title = name;
    }
    if (const auto match = momentPattern().match(title); match.hasMatch()) {
        autoTier = tierFromTag(match.captured(1));
        autoScore = match.captured(2).toLongLong();
        autoLabel = match.captured(3);
    }
}

bool Clip::hasDefaultTitle() const
{
    return datePattern().match(title).hasMatch();
}

QString Clip::displayTitle() const
{
    if (autoLabel) {
        return *autoLabel;
    }
    if (const auto match = datePattern().match(title); match.hasMatch()) {
        return T("{0} klibi", game) + title.mid(match.capturedLength());
    }
    return title;
}

bool Clip::isTall() const
{
    return title.contains(QStringLiteral("(9x16)")) || title.contains(QStringLiteral("(4x5)"));
}

} // namespace quelto
