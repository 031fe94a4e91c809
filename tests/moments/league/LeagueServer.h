// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/moments/league/Fixtures.h"

#include <QHash>
#include <QHostAddress>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QUrl>

namespace quelto::test {

inline QByteArray httpResponse(const QByteArray& body, const QByteArray& status = "200 OK",
                               const QByteArray& headers = {})
{
    return "HTTP/1.1 " + status + "\r\nContent-Type: application/json\r\n" + headers +
        "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

/// A fake game client: responds over HTTPS with a self-signed certificate, on this thread's event loop.
class LeagueServer {
public:
    using Responder = std::function<void(QSslSocket& client)>;

    explicit LeagueServer(const QHostAddress& address = QHostAddress::LocalHost, quint16 port = 0)
    {
        auto tls = QSslConfiguration::defaultConfiguration();
        tls.setLocalCertificate(QSslCertificate(readFixture(QStringLiteral("server.crt"))));
        tls.setPrivateKey(QSslKey(readFixture(QStringLiteral("server.key")), QSsl::Ec));
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
        m_server.setSslConfiguration(tls);
        QObject::connect(&m_server, &QSslServer::pendingConnectionAvailable, &m_server,
                         [this] { acceptConnections(); });
        m_server.listen(address, port);
    }

    bool isListening() const { return m_server.isListening(); }
    quint16 port() const { return m_server.serverPort(); }
    QUrl address(const QString& host = QStringLiteral("127.0.0.1")) const
    {
        return QUrl(QStringLiteral("https://%1:%2/liveclientdata/allgamedata").arg(host).arg(port()));
    }

    /// What the server writes after a complete request. Without it, the server never responds.
    void setResponse(Responder responder) { m_responder = std::move(responder); }
    void setResponse(const QByteArray& bytes)
    {
        m_responder = [bytes](QSslSocket& client) { client.write(bytes); };
    }

    /// All connections, including those without a request.
    int connections() const { return m_server.connections; }
    const QList<QByteArray>& requests() const { return m_requests; }

    /// Closes the port and all connections, as if the client's process had ended.
    void shutDown()
    {
        m_server.close();
        for (auto* const client : m_server.findChildren<QSslSocket*>()) {
            client->abort();
        }
    }

private:
    void acceptConnections()
    {
        while (auto* const client = qobject_cast<QSslSocket*>(m_server.nextPendingConnection())) {
            QObject::connect(client, &QSslSocket::readyRead, client, [this, client] { read(*client); });
            QObject::connect(client, &QSslSocket::disconnected, client, &QObject::deleteLater);
            read(*client);
        }
    }

    void read(QSslSocket& client)
    {
        auto& request = m_partialRequests[&client];
        request += client.readAll();
        if (request.endsWith("\r\n\r\n")) {
            m_requests.append(std::exchange(request, {}));
            if (m_responder) {
                m_responder(client);
            }
        }
    }

    struct CountingServer final : QSslServer {
        void incomingConnection(qintptr socket) override
        {
            ++connections;
            QSslServer::incomingConnection(socket);
        }
        int connections = 0;
    };

    CountingServer m_server;
    Responder m_responder;
    QHash<QSslSocket*, QByteArray> m_partialRequests;
    QList<QByteArray> m_requests;
};

} // namespace quelto::test
