// SPDX-License-Identifier: GPL-3.0-or-later
// Requires that the watcher's events are consistent for any responses of the game client. Each line is a response.
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
    for (const auto& response :
         QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)).split('\n')) {
        const auto data = readLeagueData(response);
        listener.receive(data ? match.polled(*data) : match.pollFailed());
        require(listener.isInGame() == data.has_value());
    }
    return 0;
}
