// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/watcher/MatchWatcher.h"

namespace quelto {

namespace {

template <typename... Each> struct Overloaded : Each... {
    using Each::operator()...;
};
template <typename... Each> Overloaded(Each...) -> Overloaded<Each...>;

} // namespace

void MatchWatcher::publishEvents(const MatchEvents& news)
{
    for (const auto& each : news) {
        publish([this, each] { take(each); });
    }
}

void MatchWatcher::clear()
{
    take(MatchState{});
}

void MatchWatcher::take(const MatchEvent& news)
{
    std::visit(Overloaded{[this](const MatchState& state) { take(state); },
                          [this](const GameDetected&) { Q_EMIT gameDetected(); },
                          [this](const GameEnded&) { Q_EMIT gameEnded(); },
                          [this](const Moment& moment) { tell(moment); }},
               news);
}

void MatchWatcher::take(const MatchState& state)
{
    const auto before = std::exchange(m_state, state);
    if (before.inGame != state.inGame) {
        Q_EMIT inGameChanged();
    }
    if (before.character != state.character) {
        Q_EMIT characterChanged(state.character);
    }
}

} // namespace quelto
