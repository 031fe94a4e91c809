// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueWatcher.h"

namespace quelto {

LeagueWatcher::LeagueWatcher(const QUrl& address, QObject* parent, LeaguePollTiming timing)
    : MatchWatcher(QStringLiteral("quelto.league"), parent)
    , m_address(address)
    , m_timing(timing)
{
    connect(this, &MatchWatcher::characterChanged, this, &LeagueWatcher::championChanged);
}

LeagueWatcher::~LeagueWatcher()
{
    stopAndWait();
}

QUrl LeagueWatcher::clientAddress()
{
    return QUrl(QStringLiteral("https://127.0.0.1:2999/liveclientdata/allgamedata"));
}

void LeagueWatcher::noteAutoClipSaved()
{
    ++m_autoClipCount;
    Q_EMIT autoClipCountChanged();
}

void LeagueWatcher::open()
{
    if (m_poll) {
        return;
    }
    m_poll = std::make_unique<LeaguePoll>(
        m_address,
        [this](const std::optional<LeagueData>& data) {
            publishEvents(data ? m_match.polled(*data) : m_match.pollFailed());
        },
        m_timing);
}

void LeagueWatcher::close()
{
    m_poll.reset();
    m_match.reset();
}

} // namespace quelto
