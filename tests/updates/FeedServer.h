// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ChildProcess.h"

#include <QFile>
#include <QHash>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

namespace quelto::test {

/// A certificate authority, made for this run of the tests.
class TestAuthority {
public:
    TestAuthority()
    {
        openssl({"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "2",
                 "-subj", "/CN=Quelto test authority", "-keyout", "ca.key", "-out", "ca.crt"});
    }

    /// Trusts this authority only.
    QSslConfiguration clientSettings() const
    {
        auto tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates({QSslCertificate(read("ca.crt"))});
        return tls;
    }

    /// With a certificate for the names, for example "IP:127.0.0.1".
    QSslConfiguration serverSettings(const char* names) const
    {
        openssl({"req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-subj", "/CN=Quelto test",
                 "-keyout", "server.key", "-out", "server.csr"});
        QFile extensions(path("names.ext"));
        EXPECT_TRUE(extensions.open(QFile::WriteOnly));
        extensions.write(QByteArray("subjectAltName=") + names);
        extensions.close();
        openssl({"x509", "-req", "-in", "server.csr", "-CA", "ca.crt", "-CAkey", "ca.key", "-set_serial", "1", "-days",
                 "2", "-extfile", "names.ext", "-out", "server.crt"});
        auto tls = QSslConfiguration::defaultConfiguration();
        tls.setLocalCertificate(QSslCertificate(read("server.crt")));
        tls.setPrivateKey(QSslKey(read("server.key"), QSsl::Ec));
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
        return tls;
    }

private:
    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    QByteArray read(const char* name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QFile::ReadOnly)) << name;
        return file.readAll();
    }

    /// Arguments with a dot are files in the folder.
    void openssl(std::initializer_list<const char*> arguments) const
    {
        QStringList list;
        for (const auto* each : arguments) {
            const auto argument = QLatin1String(each);
            list.append(argument.contains(u'.') ? m_folder.filePath(argument) : argument);
        }
        pipewire::ChildProcess process(QStringLiteral("openssl"), list);
        EXPECT_EQ(process.wait(), 0) << "the program openssl is needed";
    }

    QTemporaryDir m_folder;
};

inline QByteArray httpResponse(const QByteArray& body, const QByteArray& status = "200 OK",
                               const QByteArray& headers = {})
{
    return "HTTP/1.1 " + status + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
        body;
}

/// Responds over HTTPS on this thread's event loop.
class FeedServer {
public:
    using Responder = std::function<void(QSslSocket& client, const QByteArray& request)>;

    explicit FeedServer(const QSslConfiguration& tls)
    {
        m_server.setSslConfiguration(tls);
        QObject::connect(&m_server, &QSslServer::pendingConnectionAvailable, &m_server,
                         [this] { acceptConnections(); });
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
    }

    QUrl address(const QString& path = QStringLiteral("/version.json")) const
    {
        return QUrl(QStringLiteral("https://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
    }

    /// What the server writes after a complete request. Without it, the server never responds.
    void setResponse(Responder responder) { m_responder = std::move(responder); }
    void setResponse(const QByteArray& bytes)
    {
        m_responder = [bytes](QSslSocket& client, const QByteArray&) { client.write(bytes); };
    }

    const QList<QByteArray>& requests() const { return m_requests; }

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
                m_responder(client, m_requests.last());
            }
        }
    }

    QSslServer m_server;
    Responder m_responder;
    QHash<QSslSocket*, QByteArray> m_partialRequests;
    QList<QByteArray> m_requests;
};

} // namespace quelto::test
