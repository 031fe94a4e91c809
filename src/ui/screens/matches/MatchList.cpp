// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/matches/MatchList.h"

#include "base/language/T.h"
#include "ui/screens/matches/MatchesForQml.h"
#include "ui/shared/StableRows.h"

namespace quelto {

namespace {

ListedMatch runningMatch(const MatchSession& match, const QList<Clip>& clips)
{
    return {.id = match.id,
            .icon = QStringLiteral("record.circle"),
            .title = match.name(),
            .subtitle = T("Maç sürüyor • {0} klip", clips.size()),
            .isLive = true};
}

ListedMatch finishedMatch(const MatchSession& match, const QList<Clip>& clips)
{
    QStringList details{match.dateText(), T("{0} klip", clips.size())};
    if (const auto epics = std::ranges::count(clips, ClipTier::epic, &Clip::autoTier); epics > 0) {
        details.append(T("{0} Efsane", epics));
    }
    return {.id = match.id,
            .icon = QStringLiteral("flag.checkered"),
            .title = match.name(),
            .subtitle = details.join(QStringLiteral(" • "))};
}

} // namespace

MatchList::MatchList(QObject* parent)
    : MatchList(MatchesForQml::instance.value(), parent)
{
}

MatchList::MatchList(const Dependencies& dependencies, QObject* parent)
    : QAbstractListModel(parent)
    , m_dependencies(dependencies)
{
    connect(&dependencies.clips, &MatchClips::changed, this, &MatchList::update);
    update();
    dependencies.clips.refresh();
}

void MatchList::update()
{
    if (!isLoaded()) {
        return;
    }
    const auto& [tracker, clips] = m_dependencies;
    QList<ListedMatch> matches;
    if (const auto& current = tracker.current()) {
        matches.append(runningMatch(*current, clips.clipsOf(current->id)));
    }
    for (const auto& session : tracker.sessions()) {
        matches.append(finishedMatch(session, clips.clipsOf(session.id)));
    }
    StableRows::update<&ListedMatch::id>(*this, m_matches, matches);
    Q_EMIT changed();
}

int MatchList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_matches.size());
}

QVariant MatchList::data(const QModelIndex& index, int role) const
{
    const auto& match = m_matches.at(index.row());
    switch (role) {
    case IconRole:
        return match.icon;
    case TitleRole:
        return match.title;
    case SubtitleRole:
        return match.subtitle;
    case IsLiveRole:
        return match.isLive;
    case MatchIdRole:
        return match.isLive ? QString() : matchIdText(match.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> MatchList::roleNames() const
{
    return {{IconRole, "symbol"},
            {TitleRole, "title"},
            {SubtitleRole, "subtitle"},
            {IsLiveRole, "isLive"},
            {MatchIdRole, "matchId"}};
}

int MatchList::rowOf(const QString& matchId) const
{
    const auto found = std::ranges::find_if(
        m_matches, [id = QUuid(matchId)](const ListedMatch& match) { return match.id == id && !match.isLive; });
    return found == m_matches.end() ? -1 : static_cast<int>(found - m_matches.begin());
}

void MatchList::deleteRecap(const QString& matchId)
{
    m_dependencies.tracker.deleteSession(QUuid(matchId), MatchTracker::WithClips::no);
}

void MatchList::deleteWithClips(const QString& matchId)
{
    m_dependencies.tracker.deleteSession(QUuid(matchId), MatchTracker::WithClips::yes);
}

} // namespace quelto
