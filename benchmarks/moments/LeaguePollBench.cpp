// SPDX-License-Identifier: GPL-3.0-or-later
// Measures one poll late in a match without the transport: parses a response of 300 KB and finds the new events. For
// comparison, Qt's JSON parser alone on the same bytes.
#include "moments/league/LeagueMatch.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>

namespace quelto {
namespace {

using namespace Qt::StringLiterals;

constexpr int BodyBytes = 300'000;
constexpr int Players = 10;

QString nameOf(int player)
{
    return QStringLiteral("Player %1").arg(player % Players);
}

QJsonArray players()
{
    QJsonArray players;
    for (int player = 0; player < Players; ++player) {
        QJsonArray items;
        for (int slot = 0; slot < 7; ++slot) {
            items.append(QJsonObject{{"canUse"_L1, false},
                                     {"consumable"_L1, false},
                                     {"count"_L1, 1},
                                     {"displayName"_L1, "Doran's Ring"_L1},
                                     {"itemID"_L1, 1056 + slot},
                                     {"price"_L1, 400},
                                     {"rawDescription"_L1, "GeneratedTip_Item_1056_Description"_L1},
                                     {"slot"_L1, slot}});
        }
        players.append(QJsonObject{{"championName"_L1, "Ahri"_L1},
                                   {"items"_L1, items},
                                   {"riotId"_L1, nameOf(player) + QStringLiteral("#TR1")},
                                   {"riotIdGameName"_L1, nameOf(player)},
                                   {"summonerName"_L1, nameOf(player) + QStringLiteral("#TR1")},
                                   {"scores"_L1, QJsonObject{{"creepScore"_L1, 212}, {"wardScore"_L1, 18.5}}},
                                   {"team"_L1, player < Players / 2 ? "ORDER"_L1 : "CHAOS"_L1}});
    }
    return players;
}

QJsonObject event(int id)
{
    return {{"Assisters"_L1, QJsonArray{nameOf(id + 1), nameOf(id + 2)}},
            {"EventID"_L1, id},
            {"EventName"_L1, "ChampionKill"_L1},
            {"EventTime"_L1, id * 1.37},
            {"KillerName"_L1, nameOf(id)},
            {"VictimName"_L1, nameOf(id + 5)}};
}

QByteArray bodyAt(double gameTime, const QJsonArray& events)
{
    return QJsonDocument(QJsonObject{{"activePlayer"_L1,
                                      QJsonObject{{"championStats"_L1,
                                                   QJsonObject{{"currentHealth"_L1, 812.5}, {"maxHealth"_L1, 1990.0}}},
                                                  {"summonerName"_L1, nameOf(0) + QStringLiteral("#TR1")}}},
                                     {"allPlayers"_L1, players()},
                                     {"events"_L1, QJsonObject{{"Events"_L1, events}}},
                                     {"gameData"_L1, QJsonObject{{"gameTime"_L1, gameTime}}}})
        .toJson(QJsonDocument::Indented);
}

QByteArray lateBody()
{
    QJsonArray events;
    QByteArray body;
    while (body.size() < BodyBytes) {
        for (int i = 0; i < 50; ++i) {
            events.append(event(static_cast<int>(events.size())));
        }
        body = bodyAt(1.37 * static_cast<double>(events.size()), events);
    }
    return body;
}

void onePoll(benchmark::State& state)
{
    const auto body = lateBody();
    LeagueMatch match;
    match.polled(readLeagueData(bodyAt(0, {})).value());
    match.polled(readLeagueData(body).value());
    for (auto _ : state) {
        benchmark::DoNotOptimize(match.polled(readLeagueData(body).value()));
    }
    state.counters["bytes"] = static_cast<double>(body.size());
}

/// Every event of the match is new.
void wholeMatchAtOnce(benchmark::State& state)
{
    const auto body = lateBody();
    const auto first = readLeagueData(bodyAt(0, {})).value();
    for (auto _ : state) {
        LeagueMatch match;
        match.polled(first);
        benchmark::DoNotOptimize(match.polled(readLeagueData(body).value()));
    }
}

void parserAlone(benchmark::State& state)
{
    const auto body = lateBody();
    for (auto _ : state) {
        benchmark::DoNotOptimize(QJsonDocument::fromJson(body));
    }
}

BENCHMARK(onePoll)->Unit(benchmark::kMillisecond);
BENCHMARK(wholeMatchAtOnce)->Unit(benchmark::kMillisecond);
BENCHMARK(parserAlone)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quelto
