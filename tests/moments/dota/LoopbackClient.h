// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace quelto {

/// A blocking connection, so that a test controls each packet.
class LoopbackClient {
public:
    explicit LoopbackClient(quint16 port, const char* host = "127.0.0.1")
        : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{.sin_family = AF_INET, .sin_port = htons(port)};
        inet_pton(AF_INET, host, &address.sin_addr);
        m_isConnected = ::connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    LoopbackClient(LoopbackClient&& other) noexcept
        : m_socket(std::exchange(other.m_socket, -1))
        , m_isConnected(other.m_isConnected)
    {
    }
    LoopbackClient& operator=(LoopbackClient&& other) noexcept
    {
        std::swap(m_socket, other.m_socket);
        m_isConnected = other.m_isConnected;
        return *this;
    }
    ~LoopbackClient()
    {
        if (m_socket >= 0) {
            close(m_socket);
        }
    }

    bool isConnected() const { return m_isConnected; }

    /// Returns false once the server has closed the connection.
    bool send(QByteArrayView bytes)
    {
        while (!bytes.isEmpty()) {
            const auto sent = ::send(m_socket, bytes.data(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
            if (sent <= 0) {
                return false;
            }
            bytes = bytes.sliced(sent);
        }
        return true;
    }
    void endSending() { shutdown(m_socket, SHUT_WR); }

    /// Whether data arrived or the server closed the connection.
    bool hasData(int milliseconds) const
    {
        pollfd descriptor{.fd = m_socket, .events = POLLIN};
        return poll(&descriptor, 1, milliseconds) > 0;
    }
    /// Reads until the server closes the connection, or until no data arrives for ten seconds.
    QByteArray receiveAll()
    {
        QByteArray all;
        char bytes[4096];
        while (hasData(10'000)) {
            const auto received = recv(m_socket, bytes, sizeof bytes, 0);
            if (received <= 0) {
                m_hasClosed = true;
                break;
            }
            all.append(bytes, received);
        }
        return all;
    }
    bool hasClosed() const { return m_hasClosed; }

private:
    int m_socket;
    bool m_isConnected = false;
    bool m_hasClosed = false;
};

inline QByteArray postOf(const QByteArray& body, const QByteArray& extraHeaders = {})
{
    return "POST / HTTP/1.1\r\nuser-agent: Valve/Steam HTTP Client 1.0 (570)\r\nHost: 127.0.0.1:37231\r\n" +
        extraHeaders + "content-type: application/json\r\nContent-Length: " + QByteArray::number(body.size()) +
        "\r\n\r\n" + body;
}

inline const QByteArray SuccessResponse =
    "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";

} // namespace quelto
