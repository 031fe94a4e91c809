// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/MatchEvent.h"

#include <QStringList>

namespace quelto {

/// A short text for one match event: "in game as Zeus", "in game", "detected", "ended" or "not in game". For a moment,
/// the tier's tag, points, length, headline and markers.
inline QString eventText(const MatchEvent& event)
{
    if (const auto* state = std::get_if<MatchState>(&event)) {
        const auto suffix = state->character.isEmpty() ? QString() : QStringLiteral(" as ") + state->character;
        return (state->inGame ? QStringLiteral("in game") : QStringLiteral("not in game")) + suffix;
    }
    if (const auto* moment = std::get_if<Moment>(&event)) {
        QStringList markers;
        for (const auto& marker : moment->events) {
            markers.append(QStringLiteral("%1@%2").arg(marker.name).arg(marker.secondsBeforeEnd));
        }
        return QStringLiteral("%1 %2 %3s %4 [%5]")
            .arg(tagOf(moment->tier))
            .arg(moment->score)
            .arg(moment->seconds)
            .arg(moment->label, markers.join(u' '));
    }
    return std::holds_alternative<GameDetected>(event) ? QStringLiteral("detected") : QStringLiteral("ended");
}

inline QStringList eventTexts(const MatchEvents& events)
{
    QStringList texts;
    for (const auto& event : events) {
        texts.append(eventText(event));
    }
    return texts;
}

} // namespace quelto
