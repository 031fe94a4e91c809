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

/// Takes the posts that the game sends, on this machine's own address only. Every whole request is answered with the
/// same empty success, whatever it holds, and its connection closed: who asks learns nothing, and the game never waits.
///
/// Anybody on this machine can connect, so what connections may hold is bounded, each and together. Where there is too
/// much of it, those go first that are least like the game's: the one that has been idle longest, or that holds most.
///
/// Thread: lives on one thread with an event loop.
class DotaListener {
public:
    static constexpr std::size_t MostConnections = 64;
    /// Between a program's connecting and its first byte lies far less, also on a busy machine.
    static constexpr std::chrono::milliseconds TimeToSpeak{50};

    /// Called with the body of each post, once the answer has gone out. Posts that come from web pages are left out.
    /// The callback must not destroy the listener.
    explicit DotaListener(std::function<void(const QByteArray& body)> onPost,
                          std::chrono::milliseconds timeToSpeak = TimeToSpeak);
    DotaListener(const DotaListener&) = delete;
    DotaListener& operator=(const DotaListener&) = delete;

    /// Port 0 takes any that is free. False if another program listens there, for one.
    bool listen(quint16 port);
    /// Why listening failed, in the user's language as far as the system speaks it.
    QString errorText() const { return m_server.errorString(); }
    quint16 port() const { return m_server.serverPort(); }

private:
    struct Connection {
        /// The server's child.
        QTcpSocket* socket = nullptr;
        HttpPostReader reader;
        HostTime admitted;
    };
    /// Idle longest first.
    using Connections = std::list<Connection>;

    void admitWaiting();
    void admit(QTcpSocket* socket);
    /// False if all have just come and not yet said a word.
    bool makeRoom();
    void read(Connections::iterator connection);
    void answer(Connections::iterator connection);
    void drop(Connections::iterator connection);
    /// The connection is no longer counted; its socket is left as it is, and silent.
    QTcpSocket* release(Connections::iterator connection);
    void boundMemory();

    std::function<void(const QByteArray&)> m_onPost;
    std::chrono::milliseconds m_timeToSpeak;
    Connections m_connections;
    /// What all connections hold together.
    qsizetype m_held = 0;
    QTcpServer m_server;
    /// Runs while those who want in must wait.
    QTimer m_untilRoom;
};

} // namespace quelto
