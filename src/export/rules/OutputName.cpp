// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/OutputName.h"

#include "library/naming/ClipName.h"

namespace quelto {

namespace {

QString inParentheses(const QString& text)
{
    return QStringLiteral(" (") + text + u')';
}

QString videoFileName(const QString& clipFileName, const QString& marks)
{
    return stemOf(clipFileName).toString() + marks + QStringLiteral(".mp4");
}

} // namespace

QString copyFileName(const QString& clipFileName, const QString& suffix, int attempt)
{
    return videoFileName(clipFileName, inParentheses(attempt > 1 ? suffix + u' ' + QString::number(attempt) : suffix));
}

QString aspectFileName(const QString& clipFileName, AspectRatio aspect, int attempt)
{
    return videoFileName(
        clipFileName, inParentheses(tag(aspect)) + (attempt > 1 ? inParentheses(QString::number(attempt)) : QString()));
}

} // namespace quelto
