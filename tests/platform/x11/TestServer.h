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

/// A program that ends with its owner. Not a QProcess, whose child runs in the parent's memory for a moment: the thread
/// sanitizer takes what it does there for the parent's own.
class ChildProcess {
public:
    using Environment = std::map<QByteArray, QByteArray>;
    /// Where the child finds the descriptor that it was handed.
    static constexpr int ChildDescriptor = 9;

    explicit ChildProcess(const QStringList& command, const Environment& changes = {}, int passedDescriptor = -1);
    ~ChildProcess();

    int id() const { return m_process; }
    void end(int signal);
    /// The exit code, or -1 after a signal.
    int wait();

private:
    int m_process = 0;
};

/// An X server of the test's own, for what must not be done to the shared one.
class TestServer {
public:
    explicit TestServer(const QString& size = QStringLiteral("640x480"), const QStringList& further = {});

    QString name() const { return m_name; }
    /// As by a crash.
    void kill();
    /// A program run against this server; true when it succeeds.
    bool run(const QString& program, const QStringList& arguments) const;

private:
    std::unique_ptr<ChildProcess> m_process;
    QString m_name;
};

/// Draws straight on the root window.
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

/// Runs the event loop until it holds; false when it does not within the time.
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds atMost = std::chrono::milliseconds(10000));

} // namespace quelto::test
