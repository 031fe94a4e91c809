// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueRules.h"

namespace quelto {

namespace {

bool isMyKill(const LeagueAction& deed)
{
    return deed.player.is(deed.event.killer);
}

bool isMyAssist(const LeagueAction& deed)
{
    return deed.player.isAnyOf(deed.event.assisters);
}

/// What an event of one name does. Objective and marker are for the names that differ in nothing else.
struct Rule {
    QStringView eventName;
    bool (*count)(const LeagueAction& deed, const Rule& rule, Fight& fight);
    QStringView objective = {};
    QStringView marker = {};
};

bool countChampionKill(const LeagueAction& deed, const Rule&, Fight& fight)
{
    const bool isKill = isMyKill(deed);
    const bool isAssist = !isKill && isMyAssist(deed);
    const bool isDeath = deed.player.is(deed.event.victim);
    if (!isKill && !isAssist && !(isDeath && deed.isFightOpen)) {
        return false;
    }
    if (isKill) {
        const bool isSolo = deed.event.assisters.isEmpty();
        fight.kills += 1;
        fight.soloKills += isSolo ? 1 : 0;
        fight.addEvent(deed.time, isSolo ? QStringLiteral("solo_kill") : QStringLiteral("kill"));
    } else if (isAssist) {
        fight.assists += 1;
        fight.addEvent(deed.time, QStringLiteral("assist"));
    }
    if (isDeath) {
        fight.deaths += 1;
        fight.addEvent(deed.time, QStringLiteral("my_death"));
    }
    return true;
}

bool countMultikill(const LeagueAction& deed, const Rule&, Fight& fight)
{
    const auto streak = deed.event.killStreak;
    if (!streak || !isMyKill(deed)) {
        return false;
    }
    fight.maxMulti = std::max(fight.maxMulti, *streak);
    fight.addEvent(deed.time, QStringLiteral("multikill_") + QString::number(*streak));
    return true;
}

bool countAce(const LeagueAction& deed, const Rule&, Fight& fight)
{
    const bool isOurs = deed.event.acingTeam == deed.player.team() || deed.player.is(deed.event.acer);
    if (!deed.isFightOpen || !isOurs) {
        return false;
    }
    fight.ace = true;
    fight.addEvent(deed.time, QStringLiteral("ace"));
    return true;
}

bool countFirstBlood(const LeagueAction& deed, const Rule&, Fight& fight)
{
    if (!deed.player.is(deed.event.recipient)) {
        return false;
    }
    fight.firstBlood = true;
    fight.addEvent(deed.time, QStringLiteral("first_blood"));
    return true;
}

/// The tower itself comes as an event of its own, which bears the marker.
bool countFirstTower(const LeagueAction& deed, const Rule&, Fight& fight)
{
    if (!isMyKill(deed) && !isMyAssist(deed)) {
        return false;
    }
    fight.firstTower = true;
    return true;
}

bool countBuilding(const LeagueAction& deed, const Rule& rule, Fight& fight)
{
    if (!isMyKill(deed) && !isMyAssist(deed)) {
        return false;
    }
    fight.objectives.append(rule.objective.toString());
    fight.addEvent(deed.time, rule.marker.toString());
    return true;
}

bool countMonster(const LeagueAction& deed, const QString& key, Fight& fight)
{
    const bool isKill = isMyKill(deed);
    if (!isKill && !isMyAssist(deed)) {
        return false;
    }
    if (isKill && deed.event.isStolen) {
        fight.steals.append(key);
        fight.addEvent(deed.time, QStringLiteral("steal_") + key);
    } else {
        fight.objectives.append(key);
        fight.addEvent(deed.time, QStringLiteral("objective_") + key);
    }
    return true;
}

bool countNamedMonster(const LeagueAction& deed, const Rule& rule, Fight& fight)
{
    return countMonster(deed, rule.objective.toString(), fight);
}

bool countDragon(const LeagueAction& deed, const Rule&, Fight& fight)
{
    const bool isElder = deed.event.dragonType == u"Elder";
    return countMonster(deed, isElder ? QStringLiteral("Elder") : QStringLiteral("Ejderha"), fight);
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

bool count(const LeagueAction& deed, Fight& fight)
{
    const auto* const rule = std::find_if(Rules.begin(), Rules.end(),
                                          [&deed](const Rule& each) { return each.eventName == deed.event.name; });
    return rule != Rules.end() && rule->count(deed, *rule, fight);
}

} // namespace quelto
