// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

#include <sys/types.h>

namespace quelto::pipewire {

/// A program with its input and output on pipes. QProcess forks in a way that confuses the thread sanitizer.
class ChildProcess {
public:
    ChildProcess(const QString& program, const QStringList& arguments);
    /// Ends its input and waits for its end.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// What it has written since the last call, without waiting.
    QByteArray readAvailable();
    /// Everything until it ends its output.
    QByteArray readAll();
    /// Asks it to end.
    void terminate();
    /// Waits for its end. What a shell would call its status.
    int wait();

private:
    pid_t m_pid = -1;
    int m_input = -1;
    int m_output = -1;
    int m_status = -1;
};

} // namespace quelto::pipewire
