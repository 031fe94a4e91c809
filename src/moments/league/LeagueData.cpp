// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueData.h"

#include "moments/watcher/JsonFields.h"

#include <QJsonArray>

namespace quelto {

using namespace Qt::StringLiterals;

namespace {

// Bound the work for one poll, not the size of a match.
// A long match has a few hundred events.
constexpr qsizetype MaxEvents = 10'000;
// A match has ten players; future modes may have more.
constexpr qsizetype MaxPlayers = 100;
constexpr int MaxKillStreak = 1'000;
constexpr qsizetype MaxTextLength = 1'024;
// Units: seconds, about thirty years. Small enough for sums to stay finite and exact.
constexpr double MaxTime = 1e9;

std::optional<QString> shortTextIn(const QJsonObject& object, QLatin1StringView key)
{
    auto text = textIn(object, key);
    return text && text->size() <= MaxTextLength ? text : std::nullopt;
}

QString nameIn(const QJsonObject& object, QLatin1StringView key)
{
    return shortTextIn(object, key).value_or(QString());
}

std::optional<double> timeIn(const QJsonObject& object, QLatin1StringView key)
{
    const auto time = numberIn(object, key);
    return time && std::abs(*time) <= MaxTime ? time : std::nullopt;
}

std::optional<int> killStreakIn(const QJsonObject& event)
{
    const auto streak = integerIn(event, "KillStreak"_L1);
    return streak && *streak >= 0 && *streak <= MaxKillStreak ? streak : std::nullopt;
}

/// The client sends the flag as a string.
bool isStolenIn(const QJsonObject& event)
{
    return booleanIn(event, "Stolen"_L1).value_or(nameIn(event, "Stolen"_L1).toLower() == u"true");
}

LeagueNames namesIn(const QJsonObject& player)
{
    return {nameIn(player, "riotId"_L1), nameIn(player, "riotIdGameName"_L1), nameIn(player, "summonerName"_L1)};
}

QStringList assistersIn(const QJsonObject& event)
{
    QStringList names;
    for (const auto& name : event["Assisters"_L1].toArray()) {
        if (names.size() < MaxPlayers && name.isString() && name.toString().size() <= MaxTextLength) {
            names.append(name.toString());
        }
    }
    return names;
}

std::optional<LeagueEvent> readEvent(const QJsonObject& event)
{
    const auto id = integerIn(event, "EventID"_L1);
    if (!id) {
        return std::nullopt;
    }
    return LeagueEvent{.id = *id,
                       .name = nameIn(event, "EventName"_L1),
                       .time = timeIn(event, "EventTime"_L1),
                       .killer = nameIn(event, "KillerName"_L1),
                       .victim = nameIn(event, "VictimName"_L1),
                       .assisters = assistersIn(event),
                       .killStreak = killStreakIn(event),
                       .acingTeam = shortTextIn(event, "AcingTeam"_L1),
                       .acer = nameIn(event, "Acer"_L1),
                       .recipient = nameIn(event, "Recipient"_L1),
                       .dragonType = nameIn(event, "DragonType"_L1),
                       .isStolen = isStolenIn(event)};
}

LeaguePlayer readPlayer(const QJsonObject& player)
{
    return {.names = namesIn(player),
            .team = shortTextIn(player, "team"_L1),
            .champion = nameIn(player, "championName"_L1)};
}

} // namespace

std::optional<LeagueData> readLeagueData(const QByteArray& body)
{
    const auto root = parseJsonObject(body).value_or(QJsonObject());
    const auto gameTime = timeIn(root["gameData"_L1].toObject(), "gameTime"_L1);
    const auto events = root["events"_L1].toObject()["Events"_L1].toArray();
    const auto players = root["allPlayers"_L1].toArray();
    if (!gameTime) {
        return std::nullopt;
    }
    const auto activePlayer = root["activePlayer"_L1].toObject();
    const auto stats = activePlayer["championStats"_L1].toObject();
    LeagueData data{.gameTime = *gameTime,
                    .activePlayer = namesIn(activePlayer),
                    .currentHealth = numberIn(stats, "currentHealth"_L1),
                    .maxHealth = numberIn(stats, "maxHealth"_L1)};
    for (qsizetype i = 0; i < std::min(players.size(), MaxPlayers); ++i) {
        if (players[i].isObject()) {
            data.players.append(readPlayer(players[i].toObject()));
        }
    }
    // The latest events are at the end.
    for (auto i = std::max<qsizetype>(events.size() - MaxEvents, 0); i < events.size(); ++i) {
        if (auto event = readEvent(events[i].toObject())) {
            data.events.append(*std::move(event));
        }
    }
    return data;
}

} // namespace quelto
