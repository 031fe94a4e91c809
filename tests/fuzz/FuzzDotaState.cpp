// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever is posted, what it makes the watcher tell makes sense. A line is a post; a digit before it says how long
// after the last it comes.
#include "moments/dota/DotaMatch.h"

#include "tests/fuzz/EventListener.h"

namespace {

using namespace quelto;
using namespace quelto::fuzz;

constexpr std::array Steps{0.1, 1.0, 5.0, 8.0, 12.0, 12.1, 18.0, 18.1, 30.0, 35.1};

double stepOf(QByteArrayView& line)
{
    if (line.isEmpty() || line[0] < '0' || line[0] > '9') {
        return Steps[0];
    }
    const auto step = Steps[static_cast<std::size_t>(line[0] - '0')];
    line = line.sliced(1);
    return step;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    DotaMatch match;
    EventListener listener;
    double now = 1000;
    for (const auto& each : QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split('\n')) {
        QByteArrayView line(each);
        now += stepOf(line);
        const bool needsTick = match.needsTick();
        const auto ticked = match.tick(now);
        require(needsTick || ticked.isEmpty());
        listener.hear(ticked);
        if (const auto state = readDotaState(line.toByteArray())) {
            listener.hear(match.posted(*state, now));
        }
    }
    listener.hear(match.tick(now + 40));
    require(!match.needsTick());
    return 0;
}
