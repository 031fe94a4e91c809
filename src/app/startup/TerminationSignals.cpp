// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/TerminationSignals.h"

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

namespace quelto {

namespace {

// A signal handler may do little more than write to a descriptor.
std::array<int, 2> ends{-1, -1};

void onSignal(int /*number*/)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = write(ends[0], &byte, 1);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> quit)
{
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) != 0) {
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(ends[1], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [quit = std::move(quit)] {
        char byte = 0;
        [[maybe_unused]] const auto got = read(ends[1], &byte, 1);
        quit();
    });
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        std::signal(number, onSignal);
    }
}

} // namespace quelto
