// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/MatchEvent.h"

#include <QStringList>

namespace quelto {

/// One short line for each piece of news: "in game as Zeus", "in game", "detected", "ended", "not in game", and of a
/// moment its tier's tag, points, length, headline and markers.
inline QString eventText(const MatchEvent& news)
{
    if (const auto* state = std::get_if<MatchState>(&news)) {
        const auto who = state->character.isEmpty() ? QString() : QStringLiteral(" as ") + state->character;
        return (state->inGame ? QStringLiteral("in game") : QStringLiteral("not in game")) + who;
    }
    if (const auto* moment = std::get_if<Moment>(&news)) {
        QStringList markers;
        for (const auto& event : moment->events) {
            markers.append(QStringLiteral("%1@%2").arg(event.name).arg(event.secondsBeforeEnd));
        }
        return QStringLiteral("%1 %2 %3s %4 [%5]")
            .arg(tagOf(moment->tier))
            .arg(moment->score)
            .arg(moment->seconds)
            .arg(moment->label, markers.join(u' '));
    }
    return std::holds_alternative<GameDetected>(news) ? QStringLiteral("detected") : QStringLiteral("ended");
}

inline QStringList eventText(const MatchEvents& list)
{
    QStringList texts;
    for (const auto& news : list) {
        texts.append(eventText(news));
    }
    return texts;
}

} // namespace quelto
