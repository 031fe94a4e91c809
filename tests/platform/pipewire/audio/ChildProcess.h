// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

#include <sys/types.h>

namespace quelto::pipewire {

/// A child process with its input and output on pipes. Not a QProcess: it uses vfork, which confuses the thread
/// sanitizer.
class ChildProcess {
public:
    ChildProcess(const QString& program, const QStringList& arguments);
    /// Closes the process's input and waits until it exits.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The output since the last call, without waiting.
    QByteArray readAvailable();
    /// All output until the process closes it.
    QByteArray readAll();
    /// Sends SIGTERM.
    void terminate();
    /// Waits until the process exits. Returns the exit code, or 128 plus the signal, as a shell does.
    int wait();

private:
    pid_t m_pid = -1;
    int m_input = -1;
    int m_output = -1;
    int m_status = -1;
};

} // namespace quelto::pipewire
