// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeaguePoll.h"

#include <QNetworkProxy>
#include <QSslConfiguration>

namespace quelto {

namespace {

constexpr int StatusOk = 200;
// Units: bytes.
constexpr qint64 MaxBodySize = 16 * 1024 * 1024;
// Units: bytes. Bounds what the network thread buffers for this one.
constexpr qint64 ReadBufferSize = 1024 * 1024;
constexpr int HttpsPort = 443;

bool isTrustedHost(const QString& host)
{
    return host == u"127.0.0.1" || host == u"localhost";
}

QNetworkRequest request(const QUrl& address)
{
    QNetworkRequest request(address);
    if (isTrustedHost(address.host())) {
        auto tls = QSslConfiguration::defaultConfiguration();
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
        request.setSslConfiguration(tls);
    }
    // A compressed body could exceed the size limit when unpacked.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute}) {
        request.setAttribute(attribute, QNetworkRequest::Manual);
    }
    return request;
}

} // namespace

LeaguePoll::LeaguePoll(const QUrl& address, OnPolled onPolled, LeaguePollTiming timing)
    : m_request(request(address))
    , m_onPolled(std::move(onPolled))
    , m_timing(timing)
{
    m_manager.setProxy(QNetworkProxy::NoProxy);
    m_probe.setProxy(QNetworkProxy::NoProxy);
    m_nextPoll.setSingleShot(true);
    m_nextPoll.setTimerType(Qt::PreciseTimer);
    m_timeout.setSingleShot(true);
    m_timeout.setTimerType(Qt::PreciseTimer);
    connect(&m_nextPoll, &QTimer::timeout, this, &LeaguePoll::startPoll);
    connect(&m_timeout, &QTimer::timeout, this, [this] { endPoll(std::nullopt); });
    connect(&m_probe, &QTcpSocket::connected, this, &LeaguePoll::sendRequest);
    connect(&m_probe, &QTcpSocket::errorOccurred, this, [this] { endPoll(std::nullopt); });
    m_nextPoll.start(0);
}

LeaguePoll::~LeaguePoll()
{
    cancel();
}

void LeaguePoll::startPoll()
{
    m_timeout.start(m_timing.timeout);
    if (m_hasSucceeded) {
        sendRequest();
    } else {
        probePort();
    }
}

void LeaguePoll::probePort()
{
    const auto address = m_request.url();
    m_probe.connectToHost(address.host(), static_cast<quint16>(address.port(HttpsPort)));
}

void LeaguePoll::sendRequest()
{
    m_probe.abort();
    m_reply = m_manager.get(m_request);
    m_reply->setReadBufferSize(ReadBufferSize);
    connect(m_reply, &QNetworkReply::readyRead, this, &LeaguePoll::readBody);
    connect(m_reply, &QNetworkReply::finished, this, &LeaguePoll::finishRequest);
}

void LeaguePoll::readBody()
{
    m_body += m_reply->readAll();
    if (m_body.size() > MaxBodySize) {
        endPoll(std::nullopt);
    }
}

void LeaguePoll::finishRequest()
{
    const auto status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    m_body += m_reply->readAll();
    const bool isValid =
        m_reply->error() == QNetworkReply::NoError && status == StatusOk && m_body.size() <= MaxBodySize;
    endPoll(isValid ? readLeagueData(m_body) : std::nullopt);
}

void LeaguePoll::endPoll(const std::optional<LeagueData>& data)
{
    cancel();
    m_hasSucceeded = data.has_value();
    m_nextPoll.start(m_hasSucceeded ? m_timing.delayAfterSuccess : m_timing.delayAfterFailure);
    m_onPolled(data);
}

void LeaguePoll::cancel()
{
    m_timeout.stop();
    m_body = {};
    if (auto* const reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
    m_probe.abort();
}

} // namespace quelto
