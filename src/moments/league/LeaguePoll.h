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

struct LeaguePollTiming {
    /// From the end of one poll to the start of the next.
    std::chrono::milliseconds delayAfterSuccess{1'000};
    std::chrono::milliseconds delayAfterFailure{3'000};
    /// For a whole poll, from the connection to the last byte.
    std::chrono::milliseconds timeout{2'000};
};

/// Polls one address for the live data of a match. A poll fails unless it gets valid data with status 200 in time.
/// Redirects are not followed, proxies are not used, cookies are not stored.
///
/// The client's certificate is self-signed. It is accepted only from the hosts 127.0.0.1 and localhost.
///
/// Thread: the creating thread, which needs an event loop. The destructor cancels a running poll without a callback.
class LeaguePoll final : public QObject {
    Q_OBJECT

public:
    /// The data is empty for a failed poll. The callback must not destroy the poll.
    using OnPolled = std::function<void(const std::optional<LeagueData>& data)>;

    /// The first poll starts in the next iteration of the event loop.
    LeaguePoll(const QUrl& address, OnPolled onPolled, LeaguePollTiming timing = {});
    ~LeaguePoll() override;

private:
    void startPoll();
    /// Checks whether the port is open, which costs far less than a request.
    void probePort();
    void sendRequest();
    void readBody();
    void finishRequest();
    void endPoll(const std::optional<LeagueData>& data);
    void cancel();

    QNetworkRequest m_request;
    OnPolled m_onPolled;
    LeaguePollTiming m_timing;
    bool m_hasSucceeded = false;
    QTimer m_nextPoll;
    QTimer m_timeout;
    QTcpSocket m_probe;
    QByteArray m_body;
    QNetworkAccessManager m_manager;
    QNetworkReply* m_reply = nullptr;
};

} // namespace quelto
