// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/matches/MatchSession.h"

#include "base/language/L10n.h"

#include <QFileInfo>

namespace quelto {

QStringList MatchSession::clipFiles() const
{
    QStringList files;
    std::ranges::copy_if(clips, std::back_inserter(files), [](const QString& path) { return QFileInfo::exists(path); });
    return files;
}

QString MatchSession::name() const
{
    return hero.isEmpty() ? game : game + QStringLiteral(" • ") + hero;
}

QString MatchSession::dateText() const
{
    return L10n::date(start, QStringLiteral("EEEdMMMHmm"));
}

QString matchIdText(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace quelto
