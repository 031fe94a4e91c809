// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/X11Connection.h"

#include <QByteArray>
#include <QRect>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <map>
#include <memory>

namespace quelto::test {

/// A child process that is terminated with its owner. Not a QProcess: it uses vfork, which makes the thread sanitizer
/// attribute the child's memory accesses to the parent.
class ChildProcess {
public:
    using Environment = std::map<QByteArray, QByteArray>;
    /// The number of the passed descriptor in the child.
    static constexpr int ChildDescriptor = 9;

    explicit ChildProcess(const QStringList& command, const Environment& changes = {}, int passedDescriptor = -1);
    ~ChildProcess();

    int id() const { return m_process; }
    void end(int signal);
    /// Waits for the process to exit. Returns the exit code, or -1 if a signal ended it.
    int wait();

private:
    int m_process = 0;
};

/// A separate X server, for tests that must not disturb the shared one.
class TestServer {
public:
    explicit TestServer(const QString& size = QStringLiteral("640x480"), const QStringList& extraArguments = {});

    QString name() const { return m_name; }
    /// Kills the server without a shutdown, like a crash.
    void kill();
    /// Runs a program on this server. True if it succeeds.
    bool run(const QString& program, const QStringList& arguments) const;

private:
    std::unique_ptr<ChildProcess> m_process;
    QString m_name;
};

/// Draws on the root window.
class Painter {
public:
    explicit Painter(const QString& displayName);

    void fill(const QRect& area, std::uint32_t rgb);
    void warpPointer(QPoint position);
    xcb_connection_t* server() const { return m_connection.get(); }
    const X11Connection& connection() const { return m_connection; }

private:
    X11Connection m_connection;
    xcb_gcontext_t m_graphics;
};

/// Runs the event loop until the condition holds. False if it does not in time.
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds timeout = std::chrono::milliseconds(10000));

} // namespace quelto::test
