// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSocketNotifier>

#include <functional>

namespace quelto {

/// Turns SIGTERM, SIGINT and SIGHUP into an ordinary quit, so that a logout does not lose a clip that is being saved.
///
/// At most one instance at a time. Thread: main.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> quit);

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace quelto
