// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/league/LeagueData.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <functional>

namespace quelto {

struct LeaguePollTimes {
    /// From the end of one poll to the beginning of the next.
    std::chrono::milliseconds afterGood{1'000};
    std::chrono::milliseconds afterFailed{3'000};
    /// For one poll in all, from the connection to the last byte.
    std::chrono::milliseconds atMost{2'000};
};

/// Asks one address for the live data of a match, again and again. Whatever is not an answer in time with status 200
/// and sensible data is a failed poll; nothing follows a redirect, uses a proxy or keeps a cookie.
///
/// The client's certificate is one that nobody trusts. It is accepted from 127.0.0.1 and localhost, and from nobody
/// else.
///
/// Thread: lives where it was made, which needs an event loop. Destruction ends a poll under way, untold.
class LeaguePoll final : public QObject {
    Q_OBJECT

public:
    /// Nothing for a failed poll. Must not destroy the poll.
    using OnPolled = std::function<void(const std::optional<LeagueData>& data)>;

    /// The first poll begins with the next turn of the event loop.
    LeaguePoll(const QUrl& address, OnPolled onPolled, LeaguePollTimes times = {});
    ~LeaguePoll() override;

private:
    void begin();
    /// Looks whether anybody listens at all, which is far cheaper than to ask.
    void probePort();
    void ask();
    void read();
    void answered();
    void end(const std::optional<LeagueData>& data);
    void drop();

    QNetworkRequest m_request;
    OnPolled m_onPolled;
    LeaguePollTimes m_times;
    bool m_wasGood = false;
    QTimer m_next;
    QTimer m_deadline;
    QTcpSocket m_door;
    QByteArray m_body;
    QNetworkAccessManager m_manager;
    QNetworkReply* m_reply = nullptr;
};

} // namespace quelto
