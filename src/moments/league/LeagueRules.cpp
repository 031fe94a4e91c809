// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueRules.h"

namespace quelto {

namespace {

bool isMyKill(const LeagueEventContext& context)
{
    return context.player.matches(context.event.killer);
}

bool isMyAssist(const LeagueEventContext& context)
{
    return context.player.matchesAny(context.event.assisters);
}

/// How events with one name count. The objective and the marker serve rules that share a function.
struct Rule {
    QStringView eventName;
    bool (*count)(const LeagueEventContext& context, const Rule& rule, Fight& fight);
    QStringView objective = {};
    QStringView marker = {};
};

bool countChampionKill(const LeagueEventContext& context, const Rule&, Fight& fight)
{
    const bool isKill = isMyKill(context);
    const bool isAssist = !isKill && isMyAssist(context);
    const bool isDeath = context.player.matches(context.event.victim);
    if (!isKill && !isAssist && !(isDeath && context.isFightOpen)) {
        return false;
    }
    if (isKill) {
        const bool isSolo = context.event.assisters.isEmpty();
        fight.kills += 1;
        fight.soloKills += isSolo ? 1 : 0;
        fight.addEvent(context.time, isSolo ? QStringLiteral("solo_kill") : QStringLiteral("kill"));
    } else if (isAssist) {
        fight.assists += 1;
        fight.addEvent(context.time, QStringLiteral("assist"));
    }
    if (isDeath) {
        fight.deaths += 1;
        fight.addEvent(context.time, QStringLiteral("my_death"));
    }
    return true;
}

bool countMultikill(const LeagueEventContext& context, const Rule&, Fight& fight)
{
    const auto streak = context.event.killStreak;
    if (!streak || !isMyKill(context)) {
        return false;
    }
    fight.maxMulti = std::max(fight.maxMulti, *streak);
    fight.addEvent(context.time, QStringLiteral("multikill_") + QString::number(*streak));
    return true;
}

bool countAce(const LeagueEventContext& context, const Rule&, Fight& fight)
{
    const bool isAlliedAce =
        context.event.acingTeam == context.player.team() || context.player.matches(context.event.acer);
    if (!context.isFightOpen || !isAlliedAce) {
        return false;
    }
    fight.ace = true;
    fight.addEvent(context.time, QStringLiteral("ace"));
    return true;
}

bool countFirstBlood(const LeagueEventContext& context, const Rule&, Fight& fight)
{
    if (!context.player.matches(context.event.recipient)) {
        return false;
    }
    fight.firstBlood = true;
    fight.addEvent(context.time, QStringLiteral("first_blood"));
    return true;
}

/// Adds no marker: the client also sends an event for the tower itself, which has one.
bool countFirstTower(const LeagueEventContext& context, const Rule&, Fight& fight)
{
    if (!isMyKill(context) && !isMyAssist(context)) {
        return false;
    }
    fight.firstTower = true;
    return true;
}

bool countBuilding(const LeagueEventContext& context, const Rule& rule, Fight& fight)
{
    if (!isMyKill(context) && !isMyAssist(context)) {
        return false;
    }
    fight.objectives.append(rule.objective.toString());
    fight.addEvent(context.time, rule.marker.toString());
    return true;
}

bool countMonster(const LeagueEventContext& context, const QString& key, Fight& fight)
{
    const bool isKill = isMyKill(context);
    if (!isKill && !isMyAssist(context)) {
        return false;
    }
    if (isKill && context.event.isStolen) {
        fight.steals.append(key);
        fight.addEvent(context.time, QStringLiteral("steal_") + key);
    } else {
        fight.objectives.append(key);
        fight.addEvent(context.time, QStringLiteral("objective_") + key);
    }
    return true;
}

bool countNamedMonster(const LeagueEventContext& context, const Rule& rule, Fight& fight)
{
    return countMonster(context, rule.objective.toString(), fight);
}

bool countDragon(const LeagueEventContext& context, const Rule&, Fight& fight)
{
    const bool isElder = context.event.dragonType == u"Elder";
    return countMonster(context, isElder ? QStringLiteral("Elder") : QStringLiteral("Ejderha"), fight);
}

constexpr std::array Rules{
    Rule{u"ChampionKill", countChampionKill},
    Rule{u"Multikill", countMultikill},
    Rule{u"Ace", countAce},
    Rule{u"FirstBlood", countFirstBlood},
    Rule{u"FirstBrick", countFirstTower},
    Rule{u"TurretKilled", countBuilding, u"Kule", u"tower"},
    Rule{u"InhibKilled", countBuilding, u"İnhibitör", u"inhibitor"},
    Rule{u"BaronKill", countNamedMonster, u"Baron"},
    Rule{u"HeraldKill", countNamedMonster, u"Herald"},
    Rule{u"AtakhanKill", countNamedMonster, u"Atakhan"},
    Rule{u"HordeKill", countNamedMonster, u"Voidgrub"},
    Rule{u"DragonKill", countDragon},
};

} // namespace

bool addToFight(const LeagueEventContext& context, Fight& fight)
{
    const auto* const rule = std::find_if(Rules.begin(), Rules.end(), [&context](const Rule& candidate) {
        return candidate.eventName == context.event.name;
    });
    return rule != Rules.end() && rule->count(context, *rule, fight);
}

} // namespace quelto
