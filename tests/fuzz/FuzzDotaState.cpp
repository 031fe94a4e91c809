// SPDX-License-Identifier: GPL-3.0-or-later
// Requires that the watcher's events are consistent for any posts. Each line is a post; a leading digit selects the
// delay since the previous one.
#include "moments/dota/DotaMatch.h"

#include "tests/fuzz/EventListener.h"

namespace {

using namespace quelto;
using namespace quelto::fuzz;

constexpr std::array Delays{0.1, 1.0, 5.0, 8.0, 12.0, 12.1, 18.0, 18.1, 30.0, 35.1};

/// Removes the digit from the line.
double takeDelay(QByteArrayView& line)
{
    if (line.isEmpty() || line[0] < '0' || line[0] > '9') {
        return Delays[0];
    }
    const auto delay = Delays[static_cast<std::size_t>(line[0] - '0')];
    line = line.sliced(1);
    return delay;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    DotaMatch match;
    EventListener listener;
    double now = 1000;
    for (const auto& each : QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split('\n')) {
        QByteArrayView line(each);
        now += takeDelay(line);
        const bool needsTick = match.needsTick();
        const auto ticked = match.tick(now);
        require(needsTick || ticked.isEmpty());
        listener.receive(ticked);
        if (const auto state = readDotaState(line.toByteArray())) {
            listener.receive(match.posted(*state, now));
        }
    }
    listener.receive(match.tick(now + 40));
    require(!match.needsTick());
    return 0;
}
