// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueMatch.h"
#include "moments/league/LeaguePoll.h"
#include "moments/scoring/GameNames.h"
#include "moments/watcher/MatchWatcher.h"

namespace quelto {

/// Follows League of Legends through the live data that its client offers to programs on the same machine. Does not
/// access the game's process or files.
///
/// Thread: main.
class LeagueWatcher final : public quelto::MatchWatcher {
    Q_OBJECT
    Q_PROPERTY(QString champion READ champion NOTIFY championChanged)
    Q_PROPERTY(int autoClipCount READ autoClipCount NOTIFY autoClipCountChanged)

public:
    explicit LeagueWatcher(const QUrl& address = clientAddress(), QObject* parent = nullptr,
                           LeaguePollTiming timing = {});
    ~LeagueWatcher() override;

    static QString gameName() { return gameNames::leagueOfLegends; }
    /// The address at which the game's client offers its live data.
    static QUrl clientAddress();

    QString champion() const { return character(); }
    int autoClipCount() const { return m_autoClipCount; }
    void noteAutoClipSaved();

Q_SIGNALS:
    void championChanged();
    void autoClipCountChanged();

private:
    void open() override;
    void close() override;

    QUrl m_address;
    LeaguePollTiming m_timing;
    int m_autoClipCount = 0;
    // Used on the watcher's queue only.
    LeagueMatch m_match;
    std::unique_ptr<LeaguePoll> m_poll;
};

} // namespace quelto
