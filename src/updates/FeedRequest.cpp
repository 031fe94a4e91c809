// SPDX-License-Identifier: GPL-3.0-or-later
#include "updates/FeedRequest.h"

#include <utility>

namespace quelto {

namespace {

/// Units: bytes.
constexpr qint64 MaxBodySize = 64 * 1024;
constexpr int MaxRedirects = 5;

QNetworkRequest makeRequest(const FeedRequest::Options& options)
{
    QNetworkRequest request(options.address);
    if (options.tls) {
        request.setSslConfiguration(*options.tls);
    }
    request.setRawHeader("User-Agent", options.userAgent);
    // A compressed body could exceed the size limit when unpacked.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(MaxRedirects);
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

/// Whether the server's answer arrived as a whole. Errors up to those of a proxy are of the connection; most of the
/// others stand for a status code.
bool isComplete(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::NoError ||
        (error > QNetworkReply::UnknownProxyError && error != QNetworkReply::ProtocolUnknownError &&
         error != QNetworkReply::ProtocolFailure);
}

} // namespace

FeedRequest::FeedRequest(const Options& options, Reply reply)
    : m_reply(std::move(reply))
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { end(std::nullopt); });
    m_deadline.start(options.timeout);
    m_transfer = m_manager.get(makeRequest(options));
    m_transfer->setReadBufferSize(MaxBodySize);
    connect(m_transfer, &QNetworkReply::readyRead, this, &FeedRequest::readBody);
    connect(m_transfer, &QNetworkReply::finished, this, &FeedRequest::finish);
}

FeedRequest::~FeedRequest()
{
    cancel();
}

void FeedRequest::readBody()
{
    m_body += m_transfer->readAll();
    if (m_body.size() > MaxBodySize) {
        end(std::nullopt);
    }
}

void FeedRequest::finish()
{
    const auto error = m_transfer->error();
    readBody();
    if (m_transfer != nullptr) {
        end(isComplete(error) ? std::optional(m_body) : std::nullopt);
    }
}

void FeedRequest::end(const std::optional<QByteArray>& body)
{
    cancel();
    m_reply(body);
}

void FeedRequest::cancel()
{
    m_deadline.stop();
    if (auto* const transfer = std::exchange(m_transfer, nullptr)) {
        transfer->disconnect(this);
        transfer->abort();
        transfer->deleteLater();
    }
}

} // namespace quelto
