// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaState.h"

#include "moments/watcher/JsonFields.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace quelto {

namespace {

/// Far above any real match. Bounds the loops that count kills one by one.
constexpr int MaxCounter = 1000;
/// Hero names are used in headlines and file names.
constexpr qsizetype MaxHeroNameLength = 100;

/// Empty if the field is absent or not an object.
QJsonObject objectIn(const QJsonObject& object, QLatin1StringView key)
{
    return object.value(key).toObject();
}

int counterIn(const QJsonObject& object, QLatin1StringView key)
{
    const auto counter = integerIn(object, key).value_or(0);
    return counter >= 0 && counter <= MaxCounter ? counter : 0;
}

QString toText(const QJsonValue& value)
{
    if (value.isObject()) {
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
    }
    if (value.isArray()) {
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    }
    return value.toVariant().toString();
}

QString heroNameIn(const QJsonObject& hero)
{
    const auto name = textIn(hero, QLatin1StringView("name")).value_or(QString());
    return name.size() <= MaxHeroNameLength ? name : QString();
}

bool holdsAegis(const QJsonObject& items)
{
    return std::any_of(items.begin(), items.end(), [](const QJsonValue& item) {
        return textIn(item.toObject(), QLatin1StringView("name")) == QStringLiteral("item_aegis");
    });
}

} // namespace

bool DotaState::isWin() const
{
    // A player who has not chosen a side may have the team "none", which is also the winner while the match runs.
    return !teamName.isEmpty() && teamName == winTeam && winTeam != QStringLiteral("none");
}

std::optional<DotaState> readDotaState(const QByteArray& body)
{
    const auto object = parseJsonObject(body);
    if (!object) {
        return std::nullopt;
    }
    if (!object->value(QLatin1StringView("map")).isObject() || !object->value(QLatin1StringView("player")).isObject()) {
        return DotaState{};
    }
    const auto map = objectIn(*object, QLatin1StringView("map"));
    const auto player = objectIn(*object, QLatin1StringView("player"));
    const auto hero = objectIn(*object, QLatin1StringView("hero"));

    DotaState state{.hasMatch = true};
    state.gameState = textIn(map, QLatin1StringView("game_state")).value_or(QString());
    state.matchId = toText(map.value(QLatin1StringView("matchid")));
    state.winTeam = textIn(map, QLatin1StringView("win_team")).value_or(state.winTeam);
    state.teamName = textIn(player, QLatin1StringView("team_name")).value_or(QString());
    state.kills = counterIn(player, QLatin1StringView("kills"));
    state.deaths = counterIn(player, QLatin1StringView("deaths"));
    state.assists = counterIn(player, QLatin1StringView("assists"));
    state.heroName = heroNameIn(hero);
    state.isHeroAlive = booleanIn(hero, QLatin1StringView("alive"));
    state.healthPercent = integerIn(hero, QLatin1StringView("health_percent"));
    state.hasAegis = holdsAegis(objectIn(*object, QLatin1StringView("items")));
    return state;
}

} // namespace quelto
