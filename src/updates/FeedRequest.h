// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace quelto {

/// A single HTTPS request for a small file, without cache and cookies.
///
/// The body counts whatever the status code is. There is none if the connection fails or ends early, if a redirection
/// leads to something other than HTTPS, if the body exceeds 64 KiB, or if all of this takes longer than the timeout.
///
/// Thread: one with an event loop. Destruction ends the request without a reply.
class FeedRequest final : public QObject {
    Q_OBJECT

public:
    using Reply = std::function<void(const std::optional<QByteArray>& body)>;

    struct Options {
        QUrl address;
        QByteArray userAgent;
        std::chrono::milliseconds timeout;
        /// Nothing for the certificates of the system.
        std::optional<QSslConfiguration> tls = std::nullopt;
    };

    /// Replies once, from the event loop. The reply may destroy this object by deleteLater.
    FeedRequest(const Options& options, Reply reply);
    ~FeedRequest() override;
    FeedRequest(const FeedRequest&) = delete;
    FeedRequest& operator=(const FeedRequest&) = delete;

private:
    void readBody();
    void finish();
    void end(const std::optional<QByteArray>& body);
    void cancel();

    QNetworkAccessManager m_manager;
    QNetworkReply* m_transfer = nullptr;
    QTimer m_deadline;
    QByteArray m_body;
    Reply m_reply;
};

} // namespace quelto
