// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <chrono>

namespace quelto::test {

/// Processes events until the condition is true or the timeout expires. Returns the last value of the condition.
template <typename Condition>
bool waitFor(Condition condition, std::chrono::milliseconds timeout = std::chrono::seconds(10))
{
    const QDeadlineTimer deadline(timeout);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    return condition();
}

} // namespace quelto::test
