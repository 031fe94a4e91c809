// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "moments/dota/HttpPostReader.h"

#include <QTcpServer>
#include <QTimer>

#include <chrono>
#include <functional>
#include <list>

class QTcpSocket;

namespace quelto {

/// Receives the posts of the game, on the loopback address only. Sends the same empty success response to every
/// complete request, whatever its content, then closes the connection. So a client learns nothing, and the game never
/// waits.
///
/// Any program on this machine can connect, so the number of connections and their buffered bytes are bounded. At a
/// limit, the connections least like the game's are dropped: the longest idle one, or the one with the most bytes.
///
/// Thread: the creating thread, which needs an event loop.
class DotaListener {
public:
    static constexpr std::size_t MaxConnections = 64;
    /// How long a new connection without data is kept when there are too many. Even on a busy machine a client sends
    /// its first byte much sooner.
    static constexpr std::chrono::milliseconds FirstByteTimeout{50};

    /// Calls onPost with the body of each post, after the response is sent. Posts from web pages are ignored. The
    /// callback must not destroy the listener.
    explicit DotaListener(std::function<void(const QByteArray& body)> onPost,
                          std::chrono::milliseconds firstByteTimeout = FirstByteTimeout);
    DotaListener(const DotaListener&) = delete;
    DotaListener& operator=(const DotaListener&) = delete;

    /// Port 0 selects any free port. Returns false on failure, for example if another program uses the port.
    bool listen(quint16 port);
    /// Why listen() failed, in the user's language if the system has a translation.
    QString errorText() const { return m_server.errorString(); }
    quint16 port() const { return m_server.serverPort(); }

private:
    struct Connection {
        /// Owned by the server.
        QTcpSocket* socket = nullptr;
        HttpPostReader reader;
        HostTime acceptedAt;
    };
    /// The longest idle connection comes first.
    using Connections = std::list<Connection>;

    void acceptPending();
    void accept(QTcpSocket* socket);
    /// Drops connections above the limit. Returns false if all are new and have not sent anything yet.
    bool makeRoom();
    void read(Connections::iterator connection);
    void respond(Connections::iterator connection);
    void drop(Connections::iterator connection);
    /// Removes the connection from the list and disconnects its signals. The socket stays open.
    QTcpSocket* release(Connections::iterator connection);
    void limitMemory();

    std::function<void(const QByteArray&)> m_onPost;
    std::chrono::milliseconds m_firstByteTimeout;
    Connections m_connections;
    /// Units: bytes, in all connections.
    qsizetype m_bufferedBytes = 0;
    QTcpServer m_server;
    /// Runs while new connections wait for room.
    QTimer m_acceptTimer;
};

} // namespace quelto
