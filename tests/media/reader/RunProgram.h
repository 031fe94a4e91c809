// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <vector>

namespace quelto::test {

/// Runs a program to its end, with its output and errors in these files. Returns its status, as waitpid gives it.
///
/// Uses posix_spawn because the thread sanitizer stops working after a QProcess has run. Errors: std::system_error.
int runProgram(std::vector<QByteArray> command, const QByteArray& output, const QByteArray& errors);

} // namespace quelto::test
