// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueMatch.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

const QString Me = QStringLiteral("Ufuk");
const QString Ally = QStringLiteral("Derin");
const QString Enemy = QStringLiteral("Annie Bot");
const LeagueNames MyNames{QStringLiteral("Ufuk#TR1"), Me, QStringLiteral("Ufuk#TR1")};

LeagueEvent eventNamed(const char* name)
{
    LeagueEvent event;
    event.name = QString::fromLatin1(name);
    return event;
}

LeagueEvent kill(const QString& killer, const QString& victim, const QStringList& assisters = {})
{
    auto event = eventNamed("ChampionKill");
    event.killer = killer;
    event.victim = victim;
    event.assisters = assisters;
    return event;
}

LeagueEvent objectiveKill(const char* name, const QString& killer, const QStringList& assisters = {})
{
    auto event = eventNamed(name);
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
    auto event = objectiveKill("DragonKill", killer, assisters);
    event.dragonType = QString::fromLatin1(type);
    return event;
}

LeagueEvent multikill(const QString& killer, std::optional<int> streak)
{
    auto event = objectiveKill("Multikill", killer);
    event.killStreak = streak;
    return event;
}

LeagueEvent ace(const std::optional<QString>& team, const QString& acer)
{
    auto event = eventNamed("Ace");
    event.acingTeam = team;
    event.acer = acer;
    return event;
}

LeagueEvent firstBlood(const QString& recipient)
{
    auto event = eventNamed("FirstBlood");
    event.recipient = recipient;
    return event;
}

/// A match in progress. Tests add events to its list.
class LeagueMatchTest : public testing::Test {
protected:
    LeagueMatchTest()
    {
        m_data.activePlayer = MyNames;
        m_data.players = {{.names = {QString(), QString(), Enemy},
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

    static QList<Moment> momentsOf(const MatchEvents& matchEvents)
    {
        QList<Moment> moments;
        for (const auto& matchEvent : matchEvents) {
            if (const auto* const moment = std::get_if<Moment>(&matchEvent)) {
                moments.append(*moment);
            }
        }
        return moments;
    }

    /// Polls at the given game time; returns the resulting moment.
    std::optional<Moment> momentAt(double gameTime)
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

TEST_F(LeagueMatchTest, DetectsMatchOnceAfterItsState)
{
    m_match.reset();
    const auto matchEvents = pollAt(3);
    ASSERT_EQ(matchEvents.size(), 2);
    EXPECT_EQ(std::get<MatchState>(matchEvents[0]), (MatchState{true, QStringLiteral("Ahri")}));
    EXPECT_TRUE(std::holds_alternative<GameDetected>(matchEvents[1]));
    EXPECT_TRUE(pollAt(4).isEmpty());
}

TEST_F(LeagueMatchTest, LateChampionUpdatesStateWithoutSecondDetection)
{
    m_match.reset();
    const auto players = std::exchange(m_data.players, {});
    auto matchEvents = pollAt(0.1);
    ASSERT_EQ(matchEvents.size(), 2);
    EXPECT_EQ(std::get<MatchState>(matchEvents[0]), (MatchState{true, QString()}));
    m_data.players = players;
    matchEvents = pollAt(1.1);
    ASSERT_EQ(matchEvents.size(), 1);
    EXPECT_EQ(std::get<MatchState>(matchEvents[0]), (MatchState{true, QStringLiteral("Ahri")}));
}

TEST_F(LeagueMatchTest, FailedPollWithoutMatchGivesNoEvents)
{
    LeagueMatch match;
    EXPECT_TRUE(match.pollFailed().isEmpty());
    match.polled(m_data);
    match.pollFailed();
    EXPECT_TRUE(match.pollFailed().isEmpty());
}

TEST_F(LeagueMatchTest, IgnoresEventsFromBeforeFirstPoll)
{
    m_match.reset();
    add(600, kill(Me, Enemy));
    add(600, multikill(Me, 5));
    pollAt(601);
    EXPECT_FALSE(momentAt(620));
}

TEST_F(LeagueMatchTest, ProcessesEachEventOnce)
{
    add(100, kill(Me, Enemy, {Ally}));
    m_data.events.append(m_data.events.last());
    pollAt(100.5);
    const auto moment = momentAt(107.5);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->score, 10);
    EXPECT_FALSE(momentAt(120));
}

TEST_F(LeagueMatchTest, SoloKillIsBasicMomentWithChampionInHeadline)
{
    add(100, kill(Me, Enemy));
    EXPECT_FALSE(momentAt(100.4));
    const auto moment = momentAt(107.4);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->game, QStringLiteral("League of Legends"));
    EXPECT_EQ(moment->tier, ClipTier::basic);
    EXPECT_EQ(moment->score, 15);
    EXPECT_EQ(moment->label, QStringLiteral("Solo Kill (Ahri)"));
    EXPECT_EQ(moment->seconds, 15);
    EXPECT_EQ(markersOf(*moment), QStringLiteral("solo_kill"));
    EXPECT_NEAR(moment->events[0].secondsBeforeEnd, 7.4, 1e-9);
}

TEST_F(LeagueMatchTest, HeadlineWithoutChampionHasNoSuffix)
{
    m_data.players.last().champion.clear();
    add(100, kill(Me, Enemy));
    EXPECT_EQ(momentAt(107).value().label, QStringLiteral("Solo Kill"));
}

TEST_F(LeagueMatchTest, FightEndsSevenSecondsAfterLastEvent)
{
    add(100, kill(Me, Enemy));
    EXPECT_FALSE(momentAt(106.9));
    add(106.9, kill(Ally, Enemy, {Me}));
    EXPECT_FALSE(momentAt(107));
    EXPECT_FALSE(momentAt(113.8));
    const auto moment = momentAt(113.9);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->score, 18);
    EXPECT_EQ(markersOf(*moment), QStringLiteral("solo_kill assist"));
}

TEST_F(LeagueMatchTest, FightEndsAfterExactlySevenSeconds)
{
    add(100, kill(Me, Enemy));
    EXPECT_TRUE(momentAt(107));
}

TEST_F(LeagueMatchTest, FightStaysOpenWhileGameIsPaused)
{
    add(100, kill(Me, Enemy));
    for (int poll = 0; poll < 100; ++poll) {
        EXPECT_FALSE(momentAt(103));
    }
    EXPECT_TRUE(momentAt(107));
}

TEST_F(LeagueMatchTest, GapOverTenSecondsSplitsFightsWithinOnePoll)
{
    add(100, kill(Me, Enemy));
    add(110, kill(Me, Enemy));
    add(120.01, kill(Me, Enemy));
    const auto moments = momentsOf(pollAt(121));
    ASSERT_EQ(moments.size(), 1);
    EXPECT_EQ(moments[0].label, QStringLiteral("2 Kill (Ahri)"));
    // The fight is sealed at the time of the third kill.
    EXPECT_NEAR(moments[0].events[0].secondsBeforeEnd, 20.01, 1e-9);
    EXPECT_EQ(moments[0].seconds, 28);
    EXPECT_EQ(momentAt(128).value().label, QStringLiteral("Solo Kill (Ahri)"));
}

TEST_F(LeagueMatchTest, AnyLaterEventEndsStaleFight)
{
    add(100, kill(Me, Enemy));
    add(110.5, eventNamed("MinionsSpawning"));
    const auto moments = momentsOf(pollAt(106));
    ASSERT_EQ(moments.size(), 1);
    EXPECT_NEAR(moments[0].events[0].secondsBeforeEnd, 10.5, 1e-9);
}

TEST_F(LeagueMatchTest, EventWithoutTimeGetsTimeOfPoll)
{
    add(0, kill(Me, Enemy));
    m_data.events.last().time.reset();
    pollAt(50);
    const auto moment = momentAt(58);
    ASSERT_TRUE(moment);
    EXPECT_NEAR(moment->events[0].secondsBeforeEnd, 8, 1e-9);
}

TEST_F(LeagueMatchTest, EarlierEventDoesNotMoveEndOfFightBack)
{
    add(100, kill(Me, Enemy));
    add(98, kill(Ally, Enemy, {Me}));
    EXPECT_FALSE(momentAt(106));
    EXPECT_TRUE(momentAt(107));
}

TEST_F(LeagueMatchTest, TaggedKillerMatchesKnownBareName)
{
    m_match.reset();
    m_data.activePlayer = {};
    m_data.activePlayer[2] = Me;
    m_data.players.last().names = {QString(), QString(), Me};
    pollAt(1);
    add(100, kill(QStringLiteral("UFUK#TR1"), Enemy));
    EXPECT_TRUE(momentAt(107));
}

TEST_F(LeagueMatchTest, FindsBareNameInListOfPlayers)
{
    // The active player has only the tagged name; the list of players has both.
    m_match.reset();
    m_data.activePlayer = {QStringLiteral("Ufuk#TR1"), QString(), QString()};
    pollAt(1);
    add(100, kill(Me, Enemy));
    EXPECT_TRUE(momentAt(107));
}

TEST_F(LeagueMatchTest, CountsEventsThatNamePlayersByChampion)
{
    const auto myChampion = QStringLiteral("Ahri");
    const auto enemyChampion = QStringLiteral("Annie");
    add(100, firstBlood(myChampion));
    add(100, kill(myChampion, enemyChampion));
    add(101, kill(enemyChampion, myChampion));
    add(102, kill(QStringLiteral("Jinx"), enemyChampion, {myChampion}));
    const auto moment = momentAt(109);
    ASSERT_TRUE(moment);
    EXPECT_EQ(markersOf(*moment), QStringLiteral("first_blood solo_kill my_death assist"));
}

TEST_F(LeagueMatchTest, ChampionOfTwoPlayersNamesNobody)
{
    m_data.players.first().champion = QStringLiteral("Ahri");
    pollAt(1);
    add(100, kill(QStringLiteral("Ahri"), QStringLiteral("Ahri")));
    EXPECT_FALSE(momentAt(107));
    add(200, kill(Me, Enemy));
    EXPECT_TRUE(momentAt(207));
}

TEST_F(LeagueMatchTest, SamplesHealthOnlyDuringFightAndWhileAlive)
{
    setHealth(1, 1000);
    pollAt(90);
    add(100, kill(Me, Enemy));
    setHealth(160, 1000);
    pollAt(101);
    setHealth(0, 1000);
    pollAt(102);
    setHealth(10, 0);
    pollAt(103);
    EXPECT_EQ(momentAt(107).value().label, QStringLiteral("Solo Kill (Ahri)"));

    add(200, kill(Me, Enemy));
    setHealth(150, 1000);
    pollAt(201);
    setHealth(1000, 1000);
    const auto moment = momentAt(207);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->label, QStringLiteral("Kıl Payı Solo Kill (Ahri)"));
    EXPECT_EQ(moment->score, 35);
}

TEST_F(LeagueMatchTest, DeathRemovesClutch)
{
    setHealth(10, 1000);
    add(100, kill(Me, Enemy));
    add(101, kill(Me, Enemy));
    add(102, kill(Enemy, Me));
    pollAt(102);
    const auto moment = momentAt(109);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->score, 22);
    EXPECT_EQ(moment->label, QStringLiteral("2 Kill (Ahri)"));
    EXPECT_EQ(markersOf(*moment), QStringLiteral("solo_kill solo_kill my_death"));
}

TEST_F(LeagueMatchTest, DeathAloneStartsNoFight)
{
    add(100, kill(Enemy, Me));
    add(105, firstBlood(Enemy));
    // This ace would count if the death had started a fight.
    add(105, ace(QStringLiteral("ORDER"), Me));
    add(106, kill(Me, Enemy));
    EXPECT_EQ(momentAt(113).value().score, 15);
}

TEST_F(LeagueMatchTest, DeathAfterStaleFightIsIgnored)
{
    add(100, kill(Me, Enemy));
    add(110.5, kill(Enemy, Me));
    EXPECT_EQ(momentAt(111).value().score, 15);
    // The death starts no fight either: only the state and GameEnded are left.
    EXPECT_EQ(m_match.pollFailed().size(), 2);
}

TEST_F(LeagueMatchTest, ClockMayGoBackFiveSecondsWithinMatch)
{
    pollAt(100);
    add(96, kill(Me, Enemy));
    EXPECT_FALSE(momentAt(95));
    EXPECT_TRUE(momentAt(103));
}

TEST_F(LeagueMatchTest, LargerClockStepBackStartsNewMatchAndDropsFight)
{
    pollAt(100);
    add(99, kill(Me, Enemy));
    pollAt(100.5);
    add(95, kill(Me, Enemy));
    const auto matchEvents = pollAt(95.4);
    EXPECT_TRUE(matchEvents.isEmpty());
    EXPECT_FALSE(momentAt(120));
    add(121, kill(Me, Enemy));
    EXPECT_EQ(momentAt(130).value().score, 15);
}

TEST_F(LeagueMatchTest, NewMatchIdentifiesPlayerAgain)
{
    pollAt(1000);
    const auto other = QStringLiteral("Derin");
    m_data.activePlayer = {other, QString(), QString()};
    m_data.players = {{.names = MyNames, .team = QStringLiteral("CHAOS"), .champion = QStringLiteral("Ahri")},
                      {.names = {other}, .team = QStringLiteral("ORDER"), .champion = QStringLiteral("Jinx")}};
    const auto matchEvents = pollAt(1);
    ASSERT_EQ(matchEvents.size(), 1);
    EXPECT_EQ(std::get<MatchState>(matchEvents[0]).character, QStringLiteral("Jinx"));
    add(100, kill(Me, Enemy));
    EXPECT_FALSE(momentAt(110));
}

TEST_F(LeagueMatchTest, MatchEndSealsFightAndIsRepeatedWhenPollFails)
{
    add(1800, kill(Me, Enemy));
    add(1803, eventNamed("GameEnd"));
    auto matchEvents = pollAt(1803.5);
    ASSERT_EQ(matchEvents.size(), 2);
    const auto moment = std::get<Moment>(matchEvents[0]);
    EXPECT_NEAR(moment.events[0].secondsBeforeEnd, 10, 1e-9);
    EXPECT_EQ(moment.seconds, 18);
    EXPECT_TRUE(std::holds_alternative<GameEnded>(matchEvents[1]));
    EXPECT_TRUE(pollAt(1804).isEmpty());

    matchEvents = m_match.pollFailed();
    ASSERT_EQ(matchEvents.size(), 2);
    EXPECT_EQ(std::get<MatchState>(matchEvents[0]), MatchState());
    EXPECT_TRUE(std::holds_alternative<GameEnded>(matchEvents[1]));
}

TEST_F(LeagueMatchTest, FailedPollSealsOpenFight)
{
    add(100, kill(Me, Enemy));
    pollAt(102);
    const auto matchEvents = m_match.pollFailed();
    ASSERT_EQ(matchEvents.size(), 3);
    const auto moment = std::get<Moment>(matchEvents[0]);
    EXPECT_EQ(moment.label, QStringLiteral("Solo Kill (Ahri)"));
    EXPECT_NEAR(moment.events[0].secondsBeforeEnd, 9, 1e-9);
    EXPECT_EQ(moment.seconds, 17);
    EXPECT_EQ(std::get<MatchState>(matchEvents[1]), MatchState());
    EXPECT_TRUE(std::holds_alternative<GameEnded>(matchEvents[2]));
}

TEST_F(LeagueMatchTest, ResetDropsOpenFight)
{
    add(100, kill(Me, Enemy));
    pollAt(102);
    m_match.reset();
    EXPECT_TRUE(m_match.pollFailed().isEmpty());
}

TEST_F(LeagueMatchTest, ReportsChampionBeforeMomentThatNamesIt)
{
    add(100, kill(Me, Enemy));
    pollAt(101);
    m_data.players.last().champion = QStringLiteral("Jinx");
    const auto matchEvents = pollAt(108);
    ASSERT_EQ(matchEvents.size(), 2);
    EXPECT_EQ(std::get<MatchState>(matchEvents[0]).character, QStringLiteral("Jinx"));
    EXPECT_EQ(std::get<Moment>(matchEvents[1]).label, QStringLiteral("Solo Kill (Jinx)"));
}

TEST_F(LeagueMatchTest, BoundsNumberOfRememberedEvents)
{
    const auto fill = [this](int events) {
        m_data.events.clear();
        for (int event = 0; event < events; ++event) {
            add(1, eventNamed("MinionsSpawning"));
        }
        pollAt(1);
    };
    fill(99'999);
    add(100, kill(Me, Enemy));
    EXPECT_TRUE(momentAt(107));
    add(200, kill(Me, Enemy));
    EXPECT_FALSE(momentAt(207));
}

/// The effect of one event on a fight.
struct EventRow {
    const char* name;
    LeagueEvent event;
    enum { counts, isIgnored } effect;
    int points = 0;
    const char* markers = "";
};

class LeagueEventTest : public LeagueMatchTest, public testing::WithParamInterface<EventRow> { };

TEST_P(LeagueEventTest, EffectOnFightMatchesTable)
{
    const auto& row = GetParam();
    // Scores 100 points, so that subtracted points are visible too.
    add(100, stolen(objectiveKill("BaronKill", Me)));
    add(101, row.event);
    // At 107.5 s the fight is over only if its second event did not count.
    auto moment = momentAt(107.5);
    EXPECT_EQ(moment.has_value(), row.effect == EventRow::isIgnored);
    if (!moment) {
        moment = momentAt(108);
    }
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->score, 100 + row.points);
    EXPECT_EQ(markersOf(*moment), (QStringLiteral("steal_Baron ") + QString::fromUtf8(row.markers)).trimmed());
}

const auto OwnTeam = QStringLiteral("ORDER");
const auto EnemyTeam = QStringLiteral("CHAOS");
const auto Minion = QStringLiteral("Minion_T200L2S15N0092");
const auto Tower = QStringLiteral("Turret_T1_C_05_A");

const EventRow EventRows[] = {
    {"SoloKill", kill(Me, Enemy), EventRow::counts, 15, "solo_kill"},
    {"AssistedKill", kill(Me, Enemy, {Ally}), EventRow::counts, 10, "kill"},
    {"KillWithKillerAmongAssisters", kill(Me, Enemy, {Me}), EventRow::counts, 10, "kill"},
    {"Assist", kill(Ally, Enemy, {Enemy, Me}), EventRow::counts, 3, "assist"},
    {"AssistToTower", kill(Tower, Enemy, {Me}), EventRow::counts, 3, "assist"},
    {"Death", kill(Enemy, Me), EventRow::counts, -8, "my_death"},
    {"DeathByMinion", kill(Minion, Me), EventRow::counts, -8, "my_death"},
    {"SelfKill", kill(Me, Me), EventRow::counts, 7, "solo_kill my_death"},
    {"AssistToOwnDeath", kill(Enemy, Me, {Me}), EventRow::counts, -5, "assist my_death"},
    {"KillByOthers", kill(Ally, Enemy, {Enemy}), EventRow::isIgnored},
    {"KillWithoutKiller", kill(QString(), Enemy, {QString()}), EventRow::isIgnored},

    {"DoubleKill", multikill(Me, 2), EventRow::counts, 28, "multikill_2"},
    {"TripleKill", multikill(Me, 3), EventRow::counts, 60, "multikill_3"},
    {"QuadraKill", multikill(Me, 4), EventRow::counts, 100, "multikill_4"},
    {"PentaKill", multikill(Me, 5), EventRow::counts, 170, "multikill_5"},
    {"MoreThanPentaKill", multikill(Me, 7), EventRow::counts, 190, "multikill_7"},
    {"MultikillOfOne", multikill(Me, 1), EventRow::counts, 0, "multikill_1"},
    {"MultikillByOthers", multikill(Enemy, 5), EventRow::isIgnored},
    {"MultikillOfUnknownSize", multikill(Me, std::nullopt), EventRow::isIgnored},

    {"AceOfOwnTeam", ace(OwnTeam, Ally), EventRow::counts, 5, "ace"},
    {"AceByPlayer", ace(EnemyTeam, Me), EventRow::counts, 5, "ace"},
    {"AceByPlayerWithoutTeam", ace(std::nullopt, Me), EventRow::counts, 5, "ace"},
    {"AceOfEnemyTeam", ace(EnemyTeam, Enemy), EventRow::isIgnored},
    {"AceWithoutTeam", ace(std::nullopt, Ally), EventRow::isIgnored},

    {"FirstBlood", firstBlood(Me), EventRow::counts, 8, "first_blood"},
    {"FirstBloodByOthers", firstBlood(Ally), EventRow::isIgnored},

    {"FirstTower", objectiveKill("FirstBrick", Me), EventRow::counts},
    {"AssistedFirstTower", objectiveKill("FirstBrick", Minion, {Me}), EventRow::counts},
    {"FirstTowerByOthers", objectiveKill("FirstBrick", Ally, {Enemy}), EventRow::isIgnored},
    {"Tower", objectiveKill("TurretKilled", Me), EventRow::counts, 4, "tower"},
    {"TowerByMinionWithAssist", objectiveKill("TurretKilled", Minion, {Me}), EventRow::counts, 4, "tower"},
    {"TowerByOthers", objectiveKill("TurretKilled", Minion, {Ally}), EventRow::isIgnored},
    {"Inhibitor", objectiveKill("InhibKilled", Me), EventRow::counts, 6, "inhibitor"},
    {"AssistedInhibitor", objectiveKill("InhibKilled", Ally, {Me}), EventRow::counts, 6, "inhibitor"},
    {"InhibitorByOthers", objectiveKill("InhibKilled", Ally), EventRow::isIgnored},

    {"Baron", objectiveKill("BaronKill", Me, {Ally}), EventRow::counts, 25, "objective_Baron"},
    {"StolenBaron", stolen(objectiveKill("BaronKill", Me)), EventRow::counts, 100, "steal_Baron"},
    {"AssistedBaron", objectiveKill("BaronKill", Ally, {Me}), EventRow::counts, 25, "objective_Baron"},
    {"BaronStolenByAlly", stolen(objectiveKill("BaronKill", Ally, {Me})), EventRow::counts, 25, "objective_Baron"},
    {"BaronByOthers", objectiveKill("BaronKill", Enemy), EventRow::isIgnored},
    {"BaronStolenByOthers", stolen(objectiveKill("BaronKill", Enemy)), EventRow::isIgnored},
    {"Herald", objectiveKill("HeraldKill", Me), EventRow::counts, 10, "objective_Herald"},
    {"StolenHerald", stolen(objectiveKill("HeraldKill", Me)), EventRow::counts, 40, "steal_Herald"},
    {"HeraldByOthers", objectiveKill("HeraldKill", Ally), EventRow::isIgnored},
    {"Atakhan", objectiveKill("AtakhanKill", Me), EventRow::counts, 20, "objective_Atakhan"},
    {"StolenAtakhan", stolen(objectiveKill("AtakhanKill", Me)), EventRow::counts, 70, "steal_Atakhan"},
    {"AtakhanByOthers", objectiveKill("AtakhanKill", Ally), EventRow::isIgnored},
    {"Voidgrub", objectiveKill("HordeKill", Me), EventRow::counts, 0, "objective_Voidgrub"},
    {"StolenVoidgrub", stolen(objectiveKill("HordeKill", Me)), EventRow::counts, 40, "steal_Voidgrub"},
    {"VoidgrubByOthers", objectiveKill("HordeKill", Ally), EventRow::isIgnored},
    {"Dragon", dragon("Fire", Me), EventRow::counts, 15, "objective_Ejderha"},
    {"StolenDragon", stolen(dragon("Fire", Me)), EventRow::counts, 60, "steal_Ejderha"},
    {"DragonStolenByAlly", stolen(dragon("Air", Ally, {Me})), EventRow::counts, 15, "objective_Ejderha"},
    {"DragonWithoutType", objectiveKill("DragonKill", Me), EventRow::counts, 15, "objective_Ejderha"},
    {"DragonTypeInLowerCase", dragon("elder", Me), EventRow::counts, 15, "objective_Ejderha"},
    {"ElderDragon", dragon("Elder", Me), EventRow::counts, 30, "objective_Elder"},
    {"StolenElderDragon", stolen(dragon("Elder", Me)), EventRow::counts, 100, "steal_Elder"},
    {"DragonByOthers", dragon("Elder", Enemy), EventRow::isIgnored},

    {"GameStart", eventNamed("GameStart"), EventRow::isIgnored},
    {"InhibitorRespawn", objectiveKill("InhibRespawned", Me), EventRow::isIgnored},
    {"EventWithoutName", objectiveKill("", Me, {Me}), EventRow::isIgnored},
    {"EventNameInLowerCase", objectiveKill("baronkill", Me), EventRow::isIgnored},
};

INSTANTIATE_TEST_SUITE_P(Each, LeagueEventTest, testing::ValuesIn(EventRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(LeagueMatchTest, SomeEventsExtendFightButStartNone)
{
    // An ace counts only in an open fight, so it shows whether the previous event started one.
    const std::pair<LeagueEvent, bool> rows[] = {
        {kill(Me, Enemy), true},
        {kill(Ally, Enemy, {Me}), true},
        {kill(Enemy, Me), false},
        {multikill(Me, 2), true},
        {ace(OwnTeam, Me), false},
        {firstBlood(Me), true},
        {objectiveKill("FirstBrick", Me), true},
        {objectiveKill("TurretKilled", Me), true},
        {objectiveKill("HordeKill", Me), true},
        {eventNamed("GameStart"), false},
    };
    double time = 0;
    for (const auto& [event, startsFight] : rows) {
        time += 100;
        add(time, event);
        add(time + 1, ace(OwnTeam, Ally));
        add(time + 2, stolen(objectiveKill("BaronKill", Me)));
        const auto moment = momentAt(time + 9);
        ASSERT_TRUE(moment) << event.name.toStdString();
        EXPECT_EQ(markersOf(*moment).contains(QStringLiteral("ace")), startsFight) << event.name.toStdString();
    }
}

/// A whole fight whose events all have the same time.
struct FightRow {
    const char* name;
    QList<LeagueEvent> events;
    int score;
    const char* label;
    double health = 1;
};

class LeagueFightTest : public LeagueMatchTest, public testing::WithParamInterface<FightRow> { };

TEST_P(LeagueFightTest, ScoreAndHeadlineMatchTable)
{
    const auto& row = GetParam();
    m_data.players.last().champion.clear();
    for (const auto& event : row.events) {
        add(100, event);
    }
    setHealth(row.health * 2000, 2000);
    EXPECT_FALSE(momentAt(101));
    const auto moment = momentAt(107);
    ASSERT_EQ(moment.has_value(), row.score >= 8);
    if (moment) {
        EXPECT_EQ(moment->score, row.score);
        EXPECT_EQ(moment->label, QString::fromUtf8(row.label));
        EXPECT_EQ(moment->tier, tierFromScore(row.score));
    }
}

const auto KillWithAssist = kill(Me, Enemy, {Ally});
const auto Assist = kill(Ally, Enemy, {Me});
const auto TowerKill = objectiveKill("TurretKilled", Me);

const FightRow FightRows[] = {
    {"SoloKill", {kill(Me, Enemy)}, 15, "Solo Kill"},
    {"Kill", {KillWithAssist}, 10, "Kill"},
    {"TwoKills", {KillWithAssist, kill(Me, Enemy)}, 25, "2 Kill"},
    {"TripleKillWithMissedKills", {multikill(Me, 3), Assist, Assist}, 66, "Triple Kill"},
    {"FiveKillsWithDoubleKill",
     {KillWithAssist, KillWithAssist, KillWithAssist, KillWithAssist, multikill(Me, 2), KillWithAssist},
     58,
     "Double Kill"},
    {"Pentakill", {multikill(Me, 5)}, 170, "PENTAKILL"},
    {"QuadraKillWithLowHealth",
     {KillWithAssist, KillWithAssist, KillWithAssist, KillWithAssist, multikill(Me, 4), Assist},
     123,
     "Kıl Payı Quadra Kill",
     0.15},
    {"KillAboveHealthLimit", {KillWithAssist}, 10, "Kill", 0.16},
    {"BaronSteal", {stolen(objectiveKill("BaronKill", Me))}, 100, "Baron Çalma!"},
    {"FirstBloodWithAce", {kill(Me, Enemy), firstBlood(Me), ace(OwnTeam, Me)}, 38, "Solo Kill + Ace + İlk Kan"},
    {"AceWithoutKill", {Assist, ace(OwnTeam, Ally)}, 8, "1 Asist + Ace"},
    {"Towers", {TowerKill, TowerKill, TowerKill}, 12, "3x Kule"},
    {"FirstTower", {TowerKill, objectiveKill("FirstBrick", Me), TowerKill}, 8, "İlk Kule"},
    {"Dragon", {dragon("Water", Ally, {Me})}, 15, "Ejderha"},
    {"OneTower", {TowerKill}, 4, ""},
    {"Voidgrubs", {objectiveKill("HordeKill", Me), objectiveKill("HordeKill", Me)}, 0, ""},
    {"OnlyFirstTower", {objectiveKill("FirstBrick", Me)}, 0, ""},
    {"KillAndDeath", {KillWithAssist, kill(Enemy, Me)}, 2, ""},
    {"KillAndTwoDeaths", {KillWithAssist, kill(Enemy, Me), kill(Enemy, Me)}, 0, ""},
    {"AceWithoutFight", {ace(OwnTeam, Me)}, 0, ""},
};

INSTANTIATE_TEST_SUITE_P(Each, LeagueFightTest, testing::ValuesIn(FightRows),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace quelto
