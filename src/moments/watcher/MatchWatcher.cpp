// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/watcher/MatchWatcher.h"

namespace quelto {

namespace {

template <typename... Callables> struct Overloaded : Callables... {
    using Callables::operator()...;
};
template <typename... Callables> Overloaded(Callables...) -> Overloaded<Callables...>;

} // namespace

void MatchWatcher::publishEvents(const MatchEvents& events)
{
    for (const auto& event : events) {
        publish([this, event] { apply(event); });
    }
}

void MatchWatcher::clear()
{
    apply(MatchState{});
}

void MatchWatcher::apply(const MatchEvent& event)
{
    std::visit(Overloaded{[this](const MatchState& state) { apply(state); },
                          [this](const GameDetected&) { Q_EMIT gameDetected(); },
                          [this](const GameEnded&) { Q_EMIT gameEnded(); },
                          [this](const Moment& moment) { reportMoment(moment); }},
               event);
}

void MatchWatcher::apply(const MatchState& state)
{
    const auto previous = std::exchange(m_state, state);
    if (previous.inGame != state.inGame) {
        Q_EMIT inGameChanged();
    }
    if (previous.character != state.character) {
        Q_EMIT characterChanged(state.character);
    }
}

} // namespace quelto
