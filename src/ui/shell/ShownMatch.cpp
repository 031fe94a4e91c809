// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/ShownMatch.h"

namespace quelto {

ShownMatch::ShownMatch(const MatchTracker& matches, const Navigation& navigation, QObject* parent)
    : QObject(parent)
    , m_matches(matches)
    , m_navigation(navigation)
{
    connect(&matches, &MatchTracker::sessionsChanged, this, &ShownMatch::changed);
    connect(&navigation, &Navigation::pageChanged, this, &ShownMatch::changed);
}

QString ShownMatch::name() const
{
    const auto shown = match();
    return shown ? shown->name() : QString();
}

QStringList ShownMatch::clipTitles() const
{
    QStringList titles;
    if (const auto shown = match()) {
        std::ranges::transform(shown->clipFiles(), std::back_inserter(titles),
                               [](const QString& path) { return Clip(path).displayTitle(); });
    }
    return titles;
}

} // namespace quelto
