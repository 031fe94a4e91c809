// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeaguePoll.h"

#include <QNetworkProxy>
#include <QSslConfiguration>

namespace quelto {

namespace {

constexpr int Success = 200;
constexpr qint64 LongestBody = 16 * 1024 * 1024;
// What may wait unread between the network's thread and this one.
constexpr qint64 ReadAhead = 1024 * 1024;
constexpr int HttpsPort = 443;

bool isThisMachine(const QString& host)
{
    return host == u"127.0.0.1" || host == u"localhost";
}

QNetworkRequest request(const QUrl& address)
{
    QNetworkRequest request(address);
    if (isThisMachine(address.host())) {
        auto tls = QSslConfiguration::defaultConfiguration();
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
        request.setSslConfiguration(tls);
    }
    // Packed bodies would grow past any bound that is kept on what comes in.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    for (const auto kept : {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
                            QNetworkRequest::AuthenticationReuseAttribute}) {
        request.setAttribute(kept, QNetworkRequest::Manual);
    }
    return request;
}

} // namespace

LeaguePoll::LeaguePoll(const QUrl& address, OnPolled onPolled, LeaguePollTimes times)
    : m_request(request(address))
    , m_onPolled(std::move(onPolled))
    , m_times(times)
{
    m_manager.setProxy(QNetworkProxy::NoProxy);
    m_door.setProxy(QNetworkProxy::NoProxy);
    m_next.setSingleShot(true);
    m_next.setTimerType(Qt::PreciseTimer);
    m_deadline.setSingleShot(true);
    m_deadline.setTimerType(Qt::PreciseTimer);
    connect(&m_next, &QTimer::timeout, this, &LeaguePoll::begin);
    connect(&m_deadline, &QTimer::timeout, this, [this] { end(std::nullopt); });
    connect(&m_door, &QTcpSocket::connected, this, &LeaguePoll::ask);
    connect(&m_door, &QTcpSocket::errorOccurred, this, [this] { end(std::nullopt); });
    m_next.start(0);
}

LeaguePoll::~LeaguePoll()
{
    drop();
}

void LeaguePoll::begin()
{
    m_deadline.start(m_times.atMost);
    if (m_wasGood) {
        ask();
    } else {
        probePort();
    }
}

void LeaguePoll::probePort()
{
    const auto address = m_request.url();
    m_door.connectToHost(address.host(), static_cast<quint16>(address.port(HttpsPort)));
}

void LeaguePoll::ask()
{
    m_door.abort();
    m_reply = m_manager.get(m_request);
    m_reply->setReadBufferSize(ReadAhead);
    connect(m_reply, &QNetworkReply::readyRead, this, &LeaguePoll::read);
    connect(m_reply, &QNetworkReply::finished, this, &LeaguePoll::answered);
}

void LeaguePoll::read()
{
    m_body += m_reply->readAll();
    if (m_body.size() > LongestBody) {
        end(std::nullopt);
    }
}

void LeaguePoll::answered()
{
    const auto status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    m_body += m_reply->readAll();
    const bool isAnswer =
        m_reply->error() == QNetworkReply::NoError && status == Success && m_body.size() <= LongestBody;
    end(isAnswer ? readLeagueData(m_body) : std::nullopt);
}

void LeaguePoll::end(const std::optional<LeagueData>& data)
{
    drop();
    m_wasGood = data.has_value();
    m_next.start(m_wasGood ? m_times.afterGood : m_times.afterFailed);
    m_onPolled(data);
}

void LeaguePoll::drop()
{
    m_deadline.stop();
    m_body = {};
    if (auto* const reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
    m_door.abort();
}

} // namespace quelto
