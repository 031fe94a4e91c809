// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/MatchSummary.h"

namespace quelto {

MatchSummary::MatchSummary(const MatchTracker& matches, const Navigation& navigation, QObject* parent)
    : QObject(parent)
    , m_matches(matches)
    , m_navigation(navigation)
{
    connect(&matches, &MatchTracker::sessionsChanged, this, &MatchSummary::changed);
    connect(&navigation, &Navigation::pageChanged, this, &MatchSummary::changed);
}

QString MatchSummary::name() const
{
    const auto session = match();
    return session ? session->name() : QString();
}

QStringList MatchSummary::clipTitles() const
{
    QStringList titles;
    if (const auto session = match()) {
        std::ranges::transform(session->clipFiles(), std::back_inserter(titles),
                               [](const QString& path) { return Clip(path).visibleTitle(); });
    }
    return titles;
}

} // namespace quelto
