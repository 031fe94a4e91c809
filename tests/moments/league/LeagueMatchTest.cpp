// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueMatch.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

const QString Me = QStringLiteral("Ufuk");
const QString Friend = QStringLiteral("Derin");
const QString Foe = QStringLiteral("Annie Bot");
const LeagueNames MyNames{QStringLiteral("Ufuk#TR1"), Me, QStringLiteral("Ufuk#TR1")};

LeagueEvent named(const char* name)
{
    LeagueEvent event;
    event.name = QString::fromLatin1(name);
    return event;
}

LeagueEvent kill(const QString& killer, const QString& victim, const QStringList& assisters = {})
{
    auto event = named("ChampionKill");
    event.killer = killer;
    event.victim = victim;
    event.assisters = assisters;
    return event;
}

LeagueEvent taken(const char* name, const QString& killer, const QStringList& assisters = {})
{
    auto event = named(name);
    event.killer = killer;
    event.assisters = assisters;
    return event;
}

LeagueEvent stolen(LeagueEvent event)
{
    event.isStolen = true;
    return event;
}

LeagueEvent dragon(const char* type, const QString& killer, const QStringList& assisters = {})
{
    auto event = taken("DragonKill", killer, assisters);
    event.dragonType = QString::fromLatin1(type);
    return event;
}

LeagueEvent multikill(const QString& killer, std::optional<int> streak)
{
    auto event = taken("Multikill", killer);
    event.killStreak = streak;
    return event;
}

LeagueEvent ace(const std::optional<QString>& team, const QString& acer)
{
    auto event = named("Ace");
    event.acingTeam = team;
    event.acer = acer;
    return event;
}

LeagueEvent firstBlood(const QString& recipient)
{
    auto event = named("FirstBlood");
    event.recipient = recipient;
    return event;
}

/// A match in progress whose list grows as a test adds to it.
class LeagueMatchTest : public testing::Test {
protected:
    LeagueMatchTest()
    {
        m_data.activePlayer = MyNames;
        m_data.players = {{.names = {QString(), QString(), Foe},
                           .team = QStringLiteral("CHAOS"),
                           .champion = QStringLiteral("Annie")},
                          {.names = MyNames, .team = QStringLiteral("ORDER"), .champion = QStringLiteral("Ahri")}};
        pollAt(0);
    }

    MatchEvents pollAt(double gameTime)
    {
        m_data.gameTime = gameTime;
        return m_match.polled(m_data);
    }

    void add(double time, LeagueEvent event)
    {
        event.id = ++m_lastId;
        event.time = time;
        m_data.events.append(event);
    }

    static QList<Moment> momentsOf(const MatchEvents& news)
    {
        QList<Moment> moments;
        for (const auto& each : news) {
            if (const auto* const moment = std::get_if<Moment>(&each)) {
                moments.append(*moment);
            }
        }
        return moments;
    }

    /// The moment that the polls up to that time make of what was added.
    std::optional<Moment> momentBy(double gameTime)
    {
        const auto moments = momentsOf(pollAt(gameTime));
        EXPECT_LE(moments.size(), 1);
        return moments.isEmpty() ? std::nullopt : std::optional(moments.first());
    }

    void setHealth(double current, double max)
    {
        m_data.currentHealth = current;
        m_data.maxHealth = max;
    }

    LeagueMatch m_match;
    LeagueData m_data;
    int m_lastId = 0;
};

QString markersOf(const Moment& moment)
{
    QStringList names;
    for (const auto& event : moment.events) {
        names.append(event.name);
    }
    return names.join(u' ');
}

TEST_F(LeagueMatchTest, AMatchIsDetectedOnceWithItsStateFirst)
{
    m_match.reset();
    const auto news = pollAt(3);
    ASSERT_EQ(news.size(), 2);
    EXPECT_EQ(std::get<MatchState>(news[0]), (MatchState{true, QStringLiteral("Ahri")}));
    EXPECT_TRUE(std::holds_alternative<GameDetected>(news[1]));
    EXPECT_TRUE(pollAt(4).isEmpty());
}

TEST_F(LeagueMatchTest, AChampionThatComesLaterIsToldButNotDetectedAgain)
{
    m_match.reset();
    const auto players = std::exchange(m_data.players, {});
    auto news = pollAt(0.1);
    ASSERT_EQ(news.size(), 2);
    EXPECT_EQ(std::get<MatchState>(news[0]), (MatchState{true, QString()}));
    m_data.players = players;
    news = pollAt(1.1);
    ASSERT_EQ(news.size(), 1);
    EXPECT_EQ(std::get<MatchState>(news[0]), (MatchState{true, QStringLiteral("Ahri")}));
}

TEST_F(LeagueMatchTest, AFailedPollWithNoMatchIsNoNews)
{
    LeagueMatch match;
    EXPECT_TRUE(match.pollFailed().isEmpty());
    match.polled(m_data);
    match.pollFailed();
    EXPECT_TRUE(match.pollFailed().isEmpty());
}

TEST_F(LeagueMatchTest, WhatHappenedBeforeTheFirstPollIsNeverTold)
{
    m_match.reset();
    add(600, kill(Me, Foe));
    add(600, multikill(Me, 5));
    pollAt(601);
    EXPECT_FALSE(momentBy(620));
}

TEST_F(LeagueMatchTest, AnEventIsHandledOnceHoweverOftenItIsListed)
{
    add(100, kill(Me, Foe, {Friend}));
    m_data.events.append(m_data.events.last());
    pollAt(100.5);
    const auto moment = momentBy(107.5);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->score, 10);
    EXPECT_FALSE(momentBy(120));
}

TEST_F(LeagueMatchTest, ASoloKillIsABasicMomentWithTheChampionBehind)
{
    add(100, kill(Me, Foe));
    EXPECT_FALSE(momentBy(100.4));
    const auto moment = momentBy(107.4);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->game, QStringLiteral("League of Legends"));
    EXPECT_EQ(moment->tier, ClipTier::basic);
    EXPECT_EQ(moment->score, 15);
    EXPECT_EQ(moment->label, QStringLiteral("Solo Kill (Ahri)"));
    EXPECT_EQ(moment->seconds, 15);
    EXPECT_EQ(markersOf(*moment), QStringLiteral("solo_kill"));
    EXPECT_NEAR(moment->events[0].secondsBeforeEnd, 7.4, 1e-9);
}

TEST_F(LeagueMatchTest, WithoutAChampionNothingStandsBehindTheHeadline)
{
    m_data.players.last().champion.clear();
    add(100, kill(Me, Foe));
    EXPECT_EQ(momentBy(107).value().label, QStringLiteral("Solo Kill"));
}

TEST_F(LeagueMatchTest, AFightIsOverSevenQuietSecondsAfterItsLastEvent)
{
    add(100, kill(Me, Foe));
    EXPECT_FALSE(momentBy(106.9));
    add(106.9, kill(Friend, Foe, {Me}));
    EXPECT_FALSE(momentBy(107));
    EXPECT_FALSE(momentBy(113.8));
    const auto moment = momentBy(113.9);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->score, 18);
    EXPECT_EQ(markersOf(*moment), QStringLiteral("solo_kill assist"));
}

TEST_F(LeagueMatchTest, AGapOfExactlySevenSecondsIsEnough)
{
    add(100, kill(Me, Foe));
    EXPECT_TRUE(momentBy(107));
}

TEST_F(LeagueMatchTest, APausedGameKeepsItsFightOpen)
{
    add(100, kill(Me, Foe));
    for (int poll = 0; poll < 100; ++poll) {
        EXPECT_FALSE(momentBy(103));
    }
    EXPECT_TRUE(momentBy(107));
}

TEST_F(LeagueMatchTest, MoreThanTenSecondsPartTwoFightsOfOneBatch)
{
    add(100, kill(Me, Foe));
    add(110, kill(Me, Foe));
    add(120.01, kill(Me, Foe));
    const auto moments = momentsOf(pollAt(121));
    ASSERT_EQ(moments.size(), 1);
    EXPECT_EQ(moments[0].label, QStringLiteral("2 Kill (Ahri)"));
    // Sealed by the third kill's time.
    EXPECT_NEAR(moments[0].events[0].secondsBeforeEnd, 20.01, 1e-9);
    EXPECT_EQ(moments[0].seconds, 28);
    EXPECT_EQ(momentBy(128).value().label, QStringLiteral("Solo Kill (Ahri)"));
}

TEST_F(LeagueMatchTest, AnyEventEndsAStaleFightEvenOneThatCountsForNothing)
{
    add(100, kill(Me, Foe));
    add(110.5, named("MinionsSpawning"));
    const auto moments = momentsOf(pollAt(106));
    ASSERT_EQ(moments.size(), 1);
    EXPECT_NEAR(moments[0].events[0].secondsBeforeEnd, 10.5, 1e-9);
}

TEST_F(LeagueMatchTest, AnEventWithoutATimeIsOfTheLastPoll)
{
    add(0, kill(Me, Foe));
    m_data.events.last().time.reset();
    pollAt(50);
    const auto moment = momentBy(58);
    ASSERT_TRUE(moment);
    EXPECT_NEAR(moment->events[0].secondsBeforeEnd, 8, 1e-9);
}

TEST_F(LeagueMatchTest, AnEventOutOfOrderDoesNotMoveTheFightBack)
{
    add(100, kill(Me, Foe));
    add(98, kill(Friend, Foe, {Me}));
    EXPECT_FALSE(momentBy(106));
    EXPECT_TRUE(momentBy(107));
}

TEST_F(LeagueMatchTest, AKillerWithATagIsThePlayerWhoseBareNameIsKnown)
{
    m_match.reset();
    m_data.activePlayer = {};
    m_data.activePlayer[2] = Me;
    m_data.players.last().names = {QString(), QString(), Me};
    pollAt(1);
    add(100, kill(QStringLiteral("UFUK#TR1"), Foe));
    EXPECT_TRUE(momentBy(107));
}

TEST_F(LeagueMatchTest, ABareNameIsFoundThroughTheListOfPlayers)
{
    // Only the tagged form comes with the active player; the list of players has both.
    m_match.reset();
    m_data.activePlayer = {QStringLiteral("Ufuk#TR1"), QString(), QString()};
    pollAt(1);
    add(100, kill(Me, Foe));
    EXPECT_TRUE(momentBy(107));
}

TEST_F(LeagueMatchTest, HealthIsSampledDuringAFightOnlyAndNeverWhenDead)
{
    setHealth(1, 1000);
    pollAt(90);
    add(100, kill(Me, Foe));
    setHealth(160, 1000);
    pollAt(101);
    setHealth(0, 1000);
    pollAt(102);
    setHealth(10, 0);
    pollAt(103);
    EXPECT_EQ(momentBy(107).value().label, QStringLiteral("Solo Kill (Ahri)"));

    add(200, kill(Me, Foe));
    setHealth(150, 1000);
    pollAt(201);
    setHealth(1000, 1000);
    const auto moment = momentBy(207);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->label, QStringLiteral("Kıl Payı Solo Kill (Ahri)"));
    EXPECT_EQ(moment->score, 35);
}

TEST_F(LeagueMatchTest, ADeathTakesTheNarrowEscapeAway)
{
    setHealth(10, 1000);
    add(100, kill(Me, Foe));
    add(101, kill(Me, Foe));
    add(102, kill(Foe, Me));
    pollAt(102);
    const auto moment = momentBy(109);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->score, 22);
    EXPECT_EQ(moment->label, QStringLiteral("2 Kill (Ahri)"));
    EXPECT_EQ(markersOf(*moment), QStringLiteral("solo_kill solo_kill my_death"));
}

TEST_F(LeagueMatchTest, ADeathAloneBeginsNoFight)
{
    add(100, kill(Foe, Me));
    add(105, firstBlood(Foe));
    // Had the death begun a fight, this would be in it.
    add(105, ace(QStringLiteral("ORDER"), Me));
    add(106, kill(Me, Foe));
    EXPECT_EQ(momentBy(113).value().score, 15);
}

TEST_F(LeagueMatchTest, ADeathAfterAStaleFightJoinsNone)
{
    add(100, kill(Me, Foe));
    add(110.5, kill(Foe, Me));
    EXPECT_EQ(momentBy(111).value().score, 15);
    // And begins none.
    EXPECT_EQ(m_match.pollFailed().size(), 2);
}

TEST_F(LeagueMatchTest, TheClockMayRunBackByFiveSecondsWithinAMatch)
{
    pollAt(100);
    add(96, kill(Me, Foe));
    EXPECT_FALSE(momentBy(95));
    EXPECT_TRUE(momentBy(103));
}

TEST_F(LeagueMatchTest, AClockThatRunsBackByMoreIsANewMatchWithoutAnOldFight)
{
    pollAt(100);
    add(99, kill(Me, Foe));
    pollAt(100.5);
    add(95, kill(Me, Foe));
    const auto news = pollAt(95.4);
    EXPECT_TRUE(news.isEmpty());
    EXPECT_FALSE(momentBy(120));
    add(121, kill(Me, Foe));
    EXPECT_EQ(momentBy(130).value().score, 15);
}

TEST_F(LeagueMatchTest, ANewMatchKnowsANewPlayer)
{
    pollAt(1000);
    const auto other = QStringLiteral("Derin");
    m_data.activePlayer = {other, QString(), QString()};
    m_data.players = {{.names = MyNames, .team = QStringLiteral("CHAOS"), .champion = QStringLiteral("Ahri")},
                      {.names = {other}, .team = QStringLiteral("ORDER"), .champion = QStringLiteral("Jinx")}};
    const auto news = pollAt(1);
    ASSERT_EQ(news.size(), 1);
    EXPECT_EQ(std::get<MatchState>(news[0]).character, QStringLiteral("Jinx"));
    add(100, kill(Me, Foe));
    EXPECT_FALSE(momentBy(110));
}

TEST_F(LeagueMatchTest, TheMatchEndSealsTheFightAtOnceAndIsToldAgainWhenTheClientGoes)
{
    add(1800, kill(Me, Foe));
    add(1803, named("GameEnd"));
    auto news = pollAt(1803.5);
    ASSERT_EQ(news.size(), 2);
    const auto moment = std::get<Moment>(news[0]);
    EXPECT_NEAR(moment.events[0].secondsBeforeEnd, 10, 1e-9);
    EXPECT_EQ(moment.seconds, 18);
    EXPECT_TRUE(std::holds_alternative<GameEnded>(news[1]));
    EXPECT_TRUE(pollAt(1804).isEmpty());

    news = m_match.pollFailed();
    ASSERT_EQ(news.size(), 2);
    EXPECT_EQ(std::get<MatchState>(news[0]), MatchState());
    EXPECT_TRUE(std::holds_alternative<GameEnded>(news[1]));
}

TEST_F(LeagueMatchTest, AClientThatGoesInMidFightLosesNothing)
{
    add(100, kill(Me, Foe));
    pollAt(102);
    const auto news = m_match.pollFailed();
    ASSERT_EQ(news.size(), 3);
    const auto moment = std::get<Moment>(news[0]);
    EXPECT_EQ(moment.label, QStringLiteral("Solo Kill (Ahri)"));
    EXPECT_NEAR(moment.events[0].secondsBeforeEnd, 9, 1e-9);
    EXPECT_EQ(moment.seconds, 17);
    EXPECT_EQ(std::get<MatchState>(news[1]), MatchState());
    EXPECT_TRUE(std::holds_alternative<GameEnded>(news[2]));
}

TEST_F(LeagueMatchTest, AResetDropsTheFight)
{
    add(100, kill(Me, Foe));
    pollAt(102);
    m_match.reset();
    EXPECT_TRUE(m_match.pollFailed().isEmpty());
}

TEST_F(LeagueMatchTest, AChampionIsToldBeforeTheMomentThatNamesIt)
{
    add(100, kill(Me, Foe));
    pollAt(101);
    m_data.players.last().champion = QStringLiteral("Jinx");
    const auto news = pollAt(108);
    ASSERT_EQ(news.size(), 2);
    EXPECT_EQ(std::get<MatchState>(news[0]).character, QStringLiteral("Jinx"));
    EXPECT_EQ(std::get<Moment>(news[1]).label, QStringLiteral("Solo Kill (Jinx)"));
}

TEST_F(LeagueMatchTest, KeepsNoMoreEventsInMindThanAnyMatchHas)
{
    const auto fill = [this](int events) {
        m_data.events.clear();
        for (int event = 0; event < events; ++event) {
            add(1, named("MinionsSpawning"));
        }
        pollAt(1);
    };
    fill(99'999);
    add(100, kill(Me, Foe));
    EXPECT_TRUE(momentBy(107));
    add(200, kill(Me, Foe));
    EXPECT_FALSE(momentBy(207));
}

/// What one event does to a fight.
struct EventRow {
    const char* name;
    LeagueEvent event;
    enum { counts, isDropped } fate;
    int points = 0;
    const char* markers = "";
};

class LeagueEventTest : public LeagueMatchTest, public testing::WithParamInterface<EventRow> { };

TEST_P(LeagueEventTest, AddsToAFightWhatTheTableSays)
{
    const auto& row = GetParam();
    // Worth 100 points, so that what is subtracted shows as well.
    add(100, stolen(taken("BaronKill", Me)));
    add(101, row.event);
    // By then a fight is over if its second event did not count.
    auto moment = momentBy(107.5);
    EXPECT_EQ(moment.has_value(), row.fate == EventRow::isDropped);
    if (!moment) {
        moment = momentBy(108);
    }
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->score, 100 + row.points);
    EXPECT_EQ(markersOf(*moment), (QStringLiteral("steal_Baron ") + QString::fromUtf8(row.markers)).trimmed());
}

const auto Order = QStringLiteral("ORDER");
const auto Chaos = QStringLiteral("CHAOS");
const auto Minion = QStringLiteral("Minion_T200L2S15N0092");
const auto Tower = QStringLiteral("Turret_T1_C_05_A");

const EventRow EventRows[] = {
    {"SoloKill", kill(Me, Foe), EventRow::counts, 15, "solo_kill"},
    {"KillWithHelp", kill(Me, Foe, {Friend}), EventRow::counts, 10, "kill"},
    {"KillInWhichTheKillerAlsoHelped", kill(Me, Foe, {Me}), EventRow::counts, 10, "kill"},
    {"Assist", kill(Friend, Foe, {Foe, Me}), EventRow::counts, 3, "assist"},
    {"AssistToATower", kill(Tower, Foe, {Me}), EventRow::counts, 3, "assist"},
    {"Death", kill(Foe, Me), EventRow::counts, -8, "my_death"},
    {"DeathByAMinion", kill(Minion, Me), EventRow::counts, -8, "my_death"},
    {"KillOfOneself", kill(Me, Me), EventRow::counts, 7, "solo_kill my_death"},
    {"AssistToOnesOwnDeath", kill(Foe, Me, {Me}), EventRow::counts, -5, "assist my_death"},
    {"KillOfOthers", kill(Friend, Foe, {Foe}), EventRow::isDropped},
    {"KillByNobody", kill(QString(), Foe, {QString()}), EventRow::isDropped},

    {"DoubleKill", multikill(Me, 2), EventRow::counts, 28, "multikill_2"},
    {"TripleKill", multikill(Me, 3), EventRow::counts, 60, "multikill_3"},
    {"QuadraKill", multikill(Me, 4), EventRow::counts, 100, "multikill_4"},
    {"PentaKill", multikill(Me, 5), EventRow::counts, 170, "multikill_5"},
    {"MoreThanPentaKill", multikill(Me, 7), EventRow::counts, 190, "multikill_7"},
    {"MultikillOfOne", multikill(Me, 1), EventRow::counts, 0, "multikill_1"},
    {"MultikillOfOthers", multikill(Foe, 5), EventRow::isDropped},
    {"MultikillOfUnknownSize", multikill(Me, std::nullopt), EventRow::isDropped},

    {"AceOfTheTeam", ace(Order, Friend), EventRow::counts, 5, "ace"},
    {"AceByThePlayer", ace(Chaos, Me), EventRow::counts, 5, "ace"},
    {"AceByThePlayerOfNoTeam", ace(std::nullopt, Me), EventRow::counts, 5, "ace"},
    {"AceOfTheOthers", ace(Chaos, Foe), EventRow::isDropped},
    {"AceOfNoTeam", ace(std::nullopt, Friend), EventRow::isDropped},

    {"FirstBlood", firstBlood(Me), EventRow::counts, 8, "first_blood"},
    {"FirstBloodOfOthers", firstBlood(Friend), EventRow::isDropped},

    {"FirstTower", taken("FirstBrick", Me), EventRow::counts},
    {"FirstTowerWithHelp", taken("FirstBrick", Minion, {Me}), EventRow::counts},
    {"FirstTowerOfOthers", taken("FirstBrick", Friend, {Foe}), EventRow::isDropped},
    {"Tower", taken("TurretKilled", Me), EventRow::counts, 4, "tower"},
    {"TowerWithAMinion", taken("TurretKilled", Minion, {Me}), EventRow::counts, 4, "tower"},
    {"TowerOfOthers", taken("TurretKilled", Minion, {Friend}), EventRow::isDropped},
    {"Inhibitor", taken("InhibKilled", Me), EventRow::counts, 6, "inhibitor"},
    {"InhibitorWithHelp", taken("InhibKilled", Friend, {Me}), EventRow::counts, 6, "inhibitor"},
    {"InhibitorOfOthers", taken("InhibKilled", Friend), EventRow::isDropped},

    {"Baron", taken("BaronKill", Me, {Friend}), EventRow::counts, 25, "objective_Baron"},
    {"BaronStolen", stolen(taken("BaronKill", Me)), EventRow::counts, 100, "steal_Baron"},
    {"BaronWithHelp", taken("BaronKill", Friend, {Me}), EventRow::counts, 25, "objective_Baron"},
    {"BaronStolenByAFriend", stolen(taken("BaronKill", Friend, {Me})), EventRow::counts, 25, "objective_Baron"},
    {"BaronOfOthers", taken("BaronKill", Foe), EventRow::isDropped},
    {"BaronStolenByOthers", stolen(taken("BaronKill", Foe)), EventRow::isDropped},
    {"Herald", taken("HeraldKill", Me), EventRow::counts, 10, "objective_Herald"},
    {"HeraldStolen", stolen(taken("HeraldKill", Me)), EventRow::counts, 40, "steal_Herald"},
    {"HeraldOfOthers", taken("HeraldKill", Friend), EventRow::isDropped},
    {"Atakhan", taken("AtakhanKill", Me), EventRow::counts, 20, "objective_Atakhan"},
    {"AtakhanStolen", stolen(taken("AtakhanKill", Me)), EventRow::counts, 70, "steal_Atakhan"},
    {"AtakhanOfOthers", taken("AtakhanKill", Friend), EventRow::isDropped},
    {"Voidgrub", taken("HordeKill", Me), EventRow::counts, 0, "objective_Voidgrub"},
    {"VoidgrubStolen", stolen(taken("HordeKill", Me)), EventRow::counts, 40, "steal_Voidgrub"},
    {"VoidgrubOfOthers", taken("HordeKill", Friend), EventRow::isDropped},
    {"Dragon", dragon("Fire", Me), EventRow::counts, 15, "objective_Ejderha"},
    {"DragonStolen", stolen(dragon("Fire", Me)), EventRow::counts, 60, "steal_Ejderha"},
    {"DragonStolenByAFriend", stolen(dragon("Air", Friend, {Me})), EventRow::counts, 15, "objective_Ejderha"},
    {"DragonOfNoType", taken("DragonKill", Me), EventRow::counts, 15, "objective_Ejderha"},
    {"DragonSpelledOtherwise", dragon("elder", Me), EventRow::counts, 15, "objective_Ejderha"},
    {"ElderDragon", dragon("Elder", Me), EventRow::counts, 30, "objective_Elder"},
    {"ElderDragonStolen", stolen(dragon("Elder", Me)), EventRow::counts, 100, "steal_Elder"},
    {"DragonOfOthers", dragon("Elder", Foe), EventRow::isDropped},

    {"GameStart", named("GameStart"), EventRow::isDropped},
    {"InhibitorBack", taken("InhibRespawned", Me), EventRow::isDropped},
    {"NoName", taken("", Me, {Me}), EventRow::isDropped},
    {"NameInAnotherCase", taken("baronkill", Me), EventRow::isDropped},
};

INSTANTIATE_TEST_SUITE_P(Each, LeagueEventTest, testing::ValuesIn(EventRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(LeagueMatchTest, SomeEventsJoinAFightButBeginNone)
{
    // An ace counts only where a fight is open, so it shows whether the event before it began one.
    const std::pair<LeagueEvent, bool> rows[] = {
        {kill(Me, Foe), true},           {kill(Friend, Foe, {Me}), true},   {kill(Foe, Me), false},
        {multikill(Me, 2), true},        {ace(Order, Me), false},           {firstBlood(Me), true},
        {taken("FirstBrick", Me), true}, {taken("TurretKilled", Me), true}, {taken("HordeKill", Me), true},
        {named("GameStart"), false},
    };
    double time = 0;
    for (const auto& [event, begins] : rows) {
        time += 100;
        add(time, event);
        add(time + 1, ace(Order, Friend));
        add(time + 2, stolen(taken("BaronKill", Me)));
        const auto moment = momentBy(time + 9);
        ASSERT_TRUE(moment) << event.name.toStdString();
        EXPECT_EQ(markersOf(*moment).contains(QStringLiteral("ace")), begins) << event.name.toStdString();
    }
}

/// A whole fight, all at one time as the client stamps it.
struct FightRow {
    const char* name;
    QList<LeagueEvent> events;
    int score;
    const char* label;
    double health = 1;
};

class LeagueFightTest : public LeagueMatchTest, public testing::WithParamInterface<FightRow> { };

TEST_P(LeagueFightTest, IsWorthWhatTheTableSays)
{
    const auto& row = GetParam();
    m_data.players.last().champion.clear();
    for (const auto& event : row.events) {
        add(100, event);
    }
    setHealth(row.health * 2000, 2000);
    EXPECT_FALSE(momentBy(101));
    const auto moment = momentBy(107);
    ASSERT_EQ(moment.has_value(), row.score >= 8);
    if (moment) {
        EXPECT_EQ(moment->score, row.score);
        EXPECT_EQ(moment->label, QString::fromUtf8(row.label));
        EXPECT_EQ(moment->tier, tierFromScore(row.score));
    }
}

const auto HelpedKill = kill(Me, Foe, {Friend});
const auto Assist = kill(Friend, Foe, {Me});
const auto TowerTaken = taken("TurretKilled", Me);

const FightRow FightRows[] = {
    {"SoloKill", {kill(Me, Foe)}, 15, "Solo Kill"},
    {"Kill", {HelpedKill}, 10, "Kill"},
    {"TwoKills", {HelpedKill, kill(Me, Foe)}, 25, "2 Kill"},
    {"TripleKillSeenFromItsLastStep", {multikill(Me, 3), Assist, Assist}, 66, "Triple Kill"},
    {"DoubleKillAmongFiveKills",
     {HelpedKill, HelpedKill, HelpedKill, HelpedKill, multikill(Me, 2), HelpedKill},
     58,
     "Double Kill"},
    {"Pentakill", {multikill(Me, 5)}, 170, "PENTAKILL"},
    {"NarrowQuadraKill",
     {HelpedKill, HelpedKill, HelpedKill, HelpedKill, multikill(Me, 4), Assist},
     123,
     "Kıl Payı Quadra Kill",
     0.15},
    {"NotSoNarrow", {HelpedKill}, 10, "Kill", 0.16},
    {"BaronSteal", {stolen(taken("BaronKill", Me))}, 100, "Baron Çalma!"},
    {"FirstBloodWithAnAce", {kill(Me, Foe), firstBlood(Me), ace(Order, Me)}, 38, "Solo Kill + Ace + İlk Kan"},
    {"AceWithoutAKill", {Assist, ace(Order, Friend)}, 8, "1 Asist + Ace"},
    {"Towers", {TowerTaken, TowerTaken, TowerTaken}, 12, "3x Kule"},
    {"FirstTower", {TowerTaken, taken("FirstBrick", Me), TowerTaken}, 8, "İlk Kule"},
    {"Dragon", {dragon("Water", Friend, {Me})}, 15, "Ejderha"},
    {"OneTower", {TowerTaken}, 4, ""},
    {"Voidgrubs", {taken("HordeKill", Me), taken("HordeKill", Me)}, 0, ""},
    {"FirstTowerAlone", {taken("FirstBrick", Me)}, 0, ""},
    {"KillAndDeath", {HelpedKill, kill(Foe, Me)}, 2, ""},
    {"KillAndTwoDeaths", {HelpedKill, kill(Foe, Me), kill(Foe, Me)}, 0, ""},
    {"AceWithNoFight", {ace(Order, Me)}, 0, ""},
};

INSTANTIATE_TEST_SUITE_P(Each, LeagueFightTest, testing::ValuesIn(FightRows),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace quelto
