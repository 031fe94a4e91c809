// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QHash>
#include <QHostAddress>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QUrl>

#include <gtest/gtest.h>

namespace quelto::test {

inline QByteArray fixture(const QString& name)
{
    QFile file(QStringLiteral(LEAGUE_FIXTURES "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

inline QByteArray httpAnswer(const QByteArray& body, const QByteArray& status = "200 OK",
                             const QByteArray& headers = {})
{
    return "HTTP/1.1 " + status + "\r\nContent-Type: application/json\r\n" + headers +
        "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

/// Stands in for the game's client: answers HTTPS with a certificate that nobody trusts, on this thread's event loop.
class LeagueServer {
public:
    using Answer = std::function<void(QSslSocket& client)>;

    explicit LeagueServer(const QHostAddress& address = QHostAddress::LocalHost, quint16 port = 0)
    {
        auto tls = QSslConfiguration::defaultConfiguration();
        tls.setLocalCertificate(QSslCertificate(fixture(QStringLiteral("server.crt"))));
        tls.setPrivateKey(QSslKey(fixture(QStringLiteral("server.key")), QSsl::Ec));
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
        m_server.setSslConfiguration(tls);
        QObject::connect(&m_server, &QSslServer::pendingConnectionAvailable, &m_server, [this] { welcome(); });
        m_server.listen(address, port);
    }

    bool isListening() const { return m_server.isListening(); }
    quint16 port() const { return m_server.serverPort(); }
    QUrl address(const QString& host = QStringLiteral("127.0.0.1")) const
    {
        return QUrl(QStringLiteral("https://%1:%2/liveclientdata/allgamedata").arg(host).arg(port()));
    }

    /// What is written to a client whose request has come in whole.
    void setAnswer(Answer answer) { m_answer = std::move(answer); }
    void setAnswer(const QByteArray& bytes)
    {
        m_answer = [bytes](QSslSocket& client) { client.write(bytes); };
    }

    /// Connections of any kind, also those that no request followed on.
    int connections() const { return m_server.connections; }
    const QList<QByteArray>& requests() const { return m_requests; }

    /// As if the client's process were gone.
    void vanish()
    {
        m_server.close();
        for (auto* const client : m_server.findChildren<QSslSocket*>()) {
            client->abort();
        }
    }

private:
    void welcome()
    {
        while (auto* const client = qobject_cast<QSslSocket*>(m_server.nextPendingConnection())) {
            QObject::connect(client, &QSslSocket::readyRead, client, [this, client] { read(*client); });
            QObject::connect(client, &QSslSocket::disconnected, client, &QObject::deleteLater);
            read(*client);
        }
    }

    void read(QSslSocket& client)
    {
        auto& request = m_halfRequests[&client];
        request += client.readAll();
        if (request.endsWith("\r\n\r\n")) {
            m_requests.append(std::exchange(request, {}));
            if (m_answer) {
                m_answer(client);
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
    Answer m_answer;
    QHash<QSslSocket*, QByteArray> m_halfRequests;
    QList<QByteArray> m_requests;
};

} // namespace quelto::test
