// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/scoring/Fight.h"

#include "base/language/T.h"

#include <QHash>

namespace quelto {

namespace {

constexpr int KillPoints = 10;
constexpr int AssistPoints = 3;
constexpr int SoloKillPoints = 5;
constexpr int AcePoints = 15;
constexpr int AcePointsWithoutKill = 5;
constexpr int FirstBloodPoints = 8;
constexpr int DefaultStealPoints = 40;
constexpr int ClutchPoints = 20;
constexpr int DeathPoints = 8;
constexpr double ClutchHealth = 0.15;

// Bounds the memory of a fight that never ends.
constexpr qsizetype MaxEvents = 1000;

constexpr int MaxMulti = 5;
// Index 0 is a multikill of 2.
constexpr std::array MultiPoints{8, 30, 60, 120};

// Units: seconds. A clip starts before the fight and ends after it.
constexpr double LeadIn = 8;
constexpr double LeadOut = 2;
constexpr double MinClipSeconds = 15;
constexpr double MaxClipSeconds = 90;

const QHash<QString, int>& stealPoints()
{
    static const QHash<QString, int> points{{QStringLiteral("Baron"), 100},
                                            {QStringLiteral("Elder"), 100},
                                            {QStringLiteral("Ejderha"), 60},
                                            {QStringLiteral("Herald"), 40},
                                            {QStringLiteral("Atakhan"), 70}};
    return points;
}

const QHash<QString, int>& objectivePoints()
{
    static const QHash<QString, int> points{
        {QStringLiteral("Baron"), 25},    {QStringLiteral("Elder"), 30},   {QStringLiteral("Ejderha"), 15},
        {QStringLiteral("Herald"), 10},   {QStringLiteral("Atakhan"), 20}, {QStringLiteral("Kule"), 4},
        {QStringLiteral("İnhibitör"), 6}, {QStringLiteral("Aegis"), 25},   {QStringLiteral("Zafer"), 30}};
    return points;
}

QString translatedKey(const QString& key)
{
    return translated(key.toUtf8().constData(), {});
}

QString multiWord(int multi, FightStyle style)
{
    const bool isDota = style == FightStyle::dota;
    switch (std::min(multi, MaxMulti)) {
    case 5:
        return isDota ? QStringLiteral("RAMPAGE") : QStringLiteral("PENTAKILL");
    case 4:
        return isDota ? QStringLiteral("Ultra Kill") : QStringLiteral("Quadra Kill");
    case 3:
        return QStringLiteral("Triple Kill");
    default:
        return QStringLiteral("Double Kill");
    }
}

QString objectivesLabel(const Fight& fight)
{
    const auto& first = fight.objectives.first();
    if (fight.firstTower && first == QStringLiteral("Kule")) {
        return T("İlk Kule");
    }
    const auto count = fight.objectives.count(first);
    return (count > 1 ? QString::number(count) + QStringLiteral("x ") : QString()) + translatedKey(first);
}

QString baseLabel(const Fight& fight)
{
    if (fight.customLabel) {
        return *fight.customLabel + (fight.kills >= 1 ? QStringLiteral(" + ") + T("{0} Kill", fight.kills) : QString());
    }
    if (!fight.steals.isEmpty()) {
        return T("{0} Çalma!", translatedKey(fight.steals.first()));
    }
    if (fight.maxMulti >= 2) {
        return multiWord(fight.maxMulti, fight.style);
    }
    if (fight.kills >= 2) {
        return T("{0} Kill", fight.kills);
    }
    if (fight.kills == 1) {
        return fight.soloKills == 1 ? QStringLiteral("Solo Kill") : QStringLiteral("Kill");
    }
    return fight.objectives.isEmpty() ? T("{0} Asist", fight.assists) : objectivesLabel(fight);
}

int clipSeconds(const Fight& fight, double now)
{
    const auto span = std::max(fight.lastTime + LeadOut, now) - fight.startTime + LeadIn;
    return static_cast<int>(std::lround(std::clamp(span, MinClipSeconds, MaxClipSeconds)));
}

} // namespace

void Fight::addEvent(double time, const QString& name)
{
    if (events.size() >= MaxEvents) {
        events.removeFirst();
    }
    events.append({.time = time, .name = name});
}

bool Fight::survivedLowHP() const
{
    return kills >= 1 && deaths == 0 && minHealth <= ClutchHealth;
}

int Fight::score() const
{
    // A multikill counts all its kills, even if the watcher saw only the last one.
    int points = KillPoints * (maxMulti > 1 ? std::max(maxMulti, kills) : std::max(kills, 0));
    points += AssistPoints * assists + SoloKillPoints * soloKills;
    if (maxMulti > 1) {
        points += MultiPoints[static_cast<std::size_t>(std::min(maxMulti, MaxMulti) - 2)];
    }
    if (ace) {
        points += kills >= 1 ? AcePoints : AcePointsWithoutKill;
    }
    points += firstBlood ? FirstBloodPoints : 0;
    for (const auto& key : steals) {
        points += stealPoints().value(key, DefaultStealPoints);
    }
    for (const auto& key : objectives) {
        points += objectivePoints().value(key, 0);
    }
    points += survivedLowHP() ? ClutchPoints : 0;
    return std::max(points + bonus - DeathPoints * deaths, 0);
}

QString Fight::label() const
{
    auto text = baseLabel(*this);
    if (survivedLowHP()) {
        text = T("Kıl Payı {0}", text);
    }
    if (ace) {
        text += QStringLiteral(" + Ace");
    }
    if (firstBlood) {
        text += QStringLiteral(" + ") + T("İlk Kan");
    }
    return text;
}

std::optional<Moment> sealed(const Fight& fight, const SealParameters& parameters)
{
    const auto score = fight.score();
    const auto tier = tierFromScore(score);
    if (!tier) {
        return std::nullopt;
    }
    Moment moment{.game = parameters.game,
                  .tier = *tier,
                  .score = score,
                  .label = fight.label(),
                  .seconds = parameters.seconds.value_or(clipSeconds(fight, parameters.now))};
    if (!parameters.character.isEmpty()) {
        moment.label += QStringLiteral(" (") + parameters.character + u')';
    }
    for (const auto& event : fight.events) {
        moment.events.append({.secondsBeforeEnd = std::max(parameters.now - event.time, 0.0), .name = event.name});
    }
    return moment;
}

QString momentLine(const Moment& moment)
{
    return T("{0} • {1} • {2} puan", labelOf(moment.tier), moment.label, moment.score);
}

} // namespace quelto
