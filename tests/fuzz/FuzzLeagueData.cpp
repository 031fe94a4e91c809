// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever the game's client answers, what it makes the watcher tell makes sense. A line is an answer.
#include "moments/league/LeagueMatch.h"

#include "tests/fuzz/EventListener.h"

namespace {

using namespace quelto;
using namespace quelto::fuzz;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    LeagueMatch match;
    EventListener listener;
    for (const auto& answer :
         QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)).split('\n')) {
        const auto data = readLeagueData(answer);
        listener.hear(data ? match.polled(*data) : match.pollFailed());
        require(listener.isInGame() == data.has_value());
    }
    return 0;
}
