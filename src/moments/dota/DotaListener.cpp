// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaListener.h"

#include <QTcpSocket>

#include <algorithm>

namespace quelto {

namespace {

constexpr qint64 LargestRead = 1024 * 1024;
/// For all connections together. A quarter of a megabyte for each is ten times what the game ever sends, so the one
/// that holds most is never the game's.
constexpr qsizetype MostHeld = 16 * 1024 * 1024;
/// Many may probePort between two turns of the event loop.
constexpr int Backlog = 256;
constexpr std::chrono::seconds AcceptPause{1};

constexpr auto Answer = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";

} // namespace

DotaListener::DotaListener(std::function<void(const QByteArray& body)> onPost, std::chrono::milliseconds timeToSpeak)
    : m_onPost(std::move(onPost))
    , m_timeToSpeak(timeToSpeak)
{
    m_server.setListenBacklogSize(Backlog);
    m_untilRoom.setSingleShot(true);
    m_untilRoom.callOnTimeout([this] {
        m_server.resumeAccepting();
        admitWaiting();
    });
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { admitWaiting(); });
    // Without a free descriptor the server stops taking connections altogether. That passes.
    QObject::connect(&m_server, &QTcpServer::acceptError, &m_server,
                     [this] { QTimer::singleShot(AcceptPause, &m_server, [this] { m_server.resumeAccepting(); }); });
}

bool DotaListener::listen(quint16 port)
{
    // The server lets the address be used again that connections of an earlier run still hold on their way out; two
    // that listen there at once exclude each other all the same.
    return m_server.listen(QHostAddress(QHostAddress::LocalHost), port);
}

void DotaListener::admitWaiting()
{
    while (m_server.hasPendingConnections()) {
        if (!makeRoom()) {
            m_server.pauseAccepting();
            m_untilRoom.start(m_timeToSpeak);
            return;
        }
        admit(m_server.nextPendingConnection());
    }
}

void DotaListener::admit(QTcpSocket* socket)
{
    socket->setReadBufferSize(LargestRead);
    const auto connection = m_connections.insert(
        m_connections.end(), Connection{.socket = socket, .reader = {}, .admitted = HostClock::now()});
    QObject::connect(socket, &QTcpSocket::readyRead, &m_server, [this, connection] { read(connection); });
    QObject::connect(socket, &QTcpSocket::disconnected, &m_server, [this, connection] { drop(connection); });
    // What happened while it waited to be let in is told by no signal any more.
    if (socket->bytesAvailable() > 0) {
        read(connection);
    }
    const bool isStillThere = std::ranges::find(m_connections, socket, &Connection::socket) != m_connections.end();
    if (isStillThere && socket->state() == QAbstractSocket::UnconnectedState) {
        drop(connection);
    }
}

bool DotaListener::makeRoom()
{
    for (std::size_t tries = 0; m_connections.size() >= MostConnections; ++tries) {
        // Many may have been admitted at once, before anything was read: who seems idle may have sent a whole post.
        auto* idlest = m_connections.front().socket;
        const bool hasSent = tries < MostConnections && idlest->waitForReadyRead(0);
        const bool isStillThere = !m_connections.empty() && m_connections.front().socket == idlest;
        if (hasSent || !isStillThere) {
            continue;
        }
        const auto leaver = std::ranges::find_if(m_connections, [this, now = HostClock::now()](const Connection& each) {
            return each.reader.size() > 0 || now - each.admitted >= m_timeToSpeak;
        });
        if (leaver == m_connections.end()) {
            return false;
        }
        drop(leaver);
    }
    return true;
}

void DotaListener::read(Connections::iterator connection)
{
    m_connections.splice(m_connections.end(), m_connections, connection);
    const auto before = connection->reader.size();
    const auto state = connection->reader.add(connection->socket->read(LargestRead));
    m_held += connection->reader.size() - before;
    switch (state) {
    case HttpPostReader::State::complete:
        answer(connection);
        break;
    case HttpPostReader::State::tooLarge:
        drop(connection);
        break;
    case HttpPostReader::State::needsMore:
        boundMemory();
        break;
    }
}

void DotaListener::answer(Connections::iterator connection)
{
    const auto post = connection->reader.post();
    auto* socket = release(connection);
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    socket->write(Answer);
    socket->flush();
    // Closes when the answer is out, and does not read on.
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
    m_held -= connection->reader.size();
    m_connections.erase(connection);
    return socket;
}

void DotaListener::boundMemory()
{
    while (m_held > MostHeld) {
        drop(std::max_element(m_connections.begin(), m_connections.end(), [](const auto& one, const auto& other) {
            return one.reader.size() < other.reader.size();
        }));
    }
}

} // namespace quelto
