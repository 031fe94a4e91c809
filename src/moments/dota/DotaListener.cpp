// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaListener.h"

#include <QTcpSocket>

#include <algorithm>

namespace quelto {

namespace {

constexpr qint64 MaxReadSize = 1024 * 1024;
/// Units: bytes, in all connections. The share of each connection, 256 KiB, is ten times what the game sends. So the
/// connection with the most bytes is never the game's.
constexpr qsizetype MaxBufferedBytes = 16 * 1024 * 1024;
/// Many clients may connect between two iterations of the event loop.
constexpr int Backlog = 256;
constexpr std::chrono::seconds AcceptRetryDelay{1};

constexpr auto Response =
    "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";

} // namespace

DotaListener::DotaListener(std::function<void(const QByteArray& body)> onPost,
                           std::chrono::milliseconds firstByteTimeout)
    : m_onPost(std::move(onPost))
    , m_firstByteTimeout(firstByteTimeout)
{
    m_server.setListenBacklogSize(Backlog);
    m_acceptTimer.setSingleShot(true);
    m_acceptTimer.callOnTimeout([this] {
        m_server.resumeAccepting();
        acceptPending();
    });
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { acceptPending(); });
    // The server stops accepting when the process is out of file descriptors. That is temporary.
    QObject::connect(&m_server, &QTcpServer::acceptError, &m_server, [this] {
        QTimer::singleShot(AcceptRetryDelay, &m_server, [this] { m_server.resumeAccepting(); });
    });
}

bool DotaListener::listen(quint16 port)
{
    // Qt sets SO_REUSEADDR, so closing connections of an earlier run do not block the port. A second listener still
    // fails.
    return m_server.listen(QHostAddress(QHostAddress::LocalHost), port);
}

void DotaListener::acceptPending()
{
    while (m_server.hasPendingConnections()) {
        if (!makeRoom()) {
            m_server.pauseAccepting();
            m_acceptTimer.start(m_firstByteTimeout);
            return;
        }
        accept(m_server.nextPendingConnection());
    }
}

void DotaListener::accept(QTcpSocket* socket)
{
    socket->setReadBufferSize(MaxReadSize);
    const auto connection = m_connections.insert(
        m_connections.end(), Connection{.socket = socket, .reader = {}, .acceptedAt = HostClock::now()});
    QObject::connect(socket, &QTcpSocket::readyRead, &m_server, [this, connection] { read(connection); });
    QObject::connect(socket, &QTcpSocket::disconnected, &m_server, [this, connection] { drop(connection); });
    // No signal is emitted for what happened before the connection was accepted.
    if (socket->bytesAvailable() > 0) {
        read(connection);
    }
    const bool isStillOpen = std::ranges::find(m_connections, socket, &Connection::socket) != m_connections.end();
    if (isStillOpen && socket->state() == QAbstractSocket::UnconnectedState) {
        drop(connection);
    }
}

bool DotaListener::makeRoom()
{
    for (std::size_t attempt = 0; m_connections.size() >= MaxConnections; ++attempt) {
        // If many connections were accepted at once, the first one may look idle but have an unread post.
        auto* longestIdle = m_connections.front().socket;
        const bool hasData = attempt < MaxConnections && longestIdle->waitForReadyRead(0);
        const bool isStillOpen = !m_connections.empty() && m_connections.front().socket == longestIdle;
        if (hasData || !isStillOpen) {
            continue;
        }
        const auto dropped =
            std::ranges::find_if(m_connections, [this, now = HostClock::now()](const Connection& candidate) {
                return candidate.reader.size() > 0 || now - candidate.acceptedAt >= m_firstByteTimeout;
            });
        if (dropped == m_connections.end()) {
            return false;
        }
        drop(dropped);
    }
    return true;
}

void DotaListener::read(Connections::iterator connection)
{
    m_connections.splice(m_connections.end(), m_connections, connection);
    const auto previousSize = connection->reader.size();
    const auto state = connection->reader.add(connection->socket->read(MaxReadSize));
    m_bufferedBytes += connection->reader.size() - previousSize;
    switch (state) {
    case HttpPostReader::State::complete:
        respond(connection);
        break;
    case HttpPostReader::State::tooLarge:
        drop(connection);
        break;
    case HttpPostReader::State::needsMore:
        limitMemory();
        break;
    }
}

void DotaListener::respond(Connections::iterator connection)
{
    const auto post = connection->reader.post();
    auto* socket = release(connection);
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    socket->write(Response);
    socket->flush();
    // Closes after the response is sent, without reading more.
    socket->disconnectFromHost();
    if (socket->state() == QAbstractSocket::UnconnectedState) {
        socket->deleteLater();
    }
    if (!post.hasOrigin) {
        m_onPost(post.body);
    }
}

void DotaListener::drop(Connections::iterator connection)
{
    auto* socket = release(connection);
    socket->abort();
    socket->deleteLater();
}

QTcpSocket* DotaListener::release(Connections::iterator connection)
{
    auto* socket = connection->socket;
    socket->disconnect(&m_server);
    m_bufferedBytes -= connection->reader.size();
    m_connections.erase(connection);
    return socket;
}

void DotaListener::limitMemory()
{
    while (m_bufferedBytes > MaxBufferedBytes) {
        drop(std::max_element(m_connections.begin(), m_connections.end(), [](const auto& one, const auto& other) {
            return one.reader.size() < other.reader.size();
        }));
    }
}

} // namespace quelto
