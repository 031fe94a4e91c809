// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/routing/MomentPolicy.h"

#include "moments/scoring/GameNames.h"
#include "tests/base/tasks/ManualQueue.h"
#include "tests/library/clips/LibraryFixture.h"
#include "tests/moments/watcher/ScriptedWatcher.h"

namespace quelto {
namespace {

using namespace std::chrono_literals;

class MomentPolicyTest : public test::LibraryFixture {
protected:
    void SetUp() override { settings.setAutoClipEnabled(true); }

    static Moment moment(const QString& game, ClipTier tier)
    {
        return {.game = game, .tier = tier, .score = 1, .label = QStringLiteral("label"), .seconds = 15, .events = {}};
    }

    /// The actions since the last call.
    QStringList done() { return std::exchange(m_done, {}); }

    test::ManualTime time;
    test::ManualQueue queue{time};
    bool isRecording = true;
    MatchTracker matches{{.library = library,
                          .main = queue,
                          .work = queue,
                          .store = MatchStore(folder.filePath(QStringLiteral("matches.json")))}};
    MomentPolicy policy{
        settings, matches,
        MomentPolicy::Actions{
            .isRecording = [this] { return isRecording; },
            .startRecording = [this] { m_done.append(QStringLiteral("start")); },
            .saveAutoClip = [this](const Moment& wanted) { m_done.append(QStringLiteral("save ") + wanted.game); }}};
    test::ScriptedWatcher league;
    test::ScriptedWatcher dota;
    test::ScriptedWatcher wow;

    void followAll()
    {
        policy.followMatches(league, gameNames::leagueOfLegends);
        policy.followMatches(dota, gameNames::dota2);
        policy.follow(wow, gameNames::worldOfWarcraft);
    }

private:
    QStringList m_done;
};

TEST_F(MomentPolicyTest, MakesAClipOnlyIfAllSwitchesAreOn)
{
    followAll();
    struct Game {
        QString name;
        test::ScriptedWatcher& watcher;
        void (AppSettings::*setSwitch)(bool);
    };
    const std::array games{Game{gameNames::leagueOfLegends, league, &AppSettings::setAutoClipLeague},
                           Game{gameNames::dota2, dota, &AppSettings::setAutoClipDota},
                           Game{gameNames::worldOfWarcraft, wow, &AppSettings::setAutoClipWoW}};
    struct Tier {
        ClipTier tier;
        void (AppSettings::*setSwitch)(bool);
    };
    const std::array tiers{Tier{ClipTier::epic, &AppSettings::setAutoClipEpic},
                           Tier{ClipTier::medium, &AppSettings::setAutoClipMedium},
                           Tier{ClipTier::basic, &AppSettings::setAutoClipBasic}};
    for (const auto& game : games) {
        for (const auto& tier : tiers) {
            for (int switches = 0; switches < 8; ++switches) {
                settings.setAutoClipEnabled((switches & 1) != 0);
                (settings.*game.setSwitch)((switches & 2) != 0);
                (settings.*tier.setSwitch)((switches & 4) != 0);
                Q_EMIT game.watcher.momentDetected(moment(game.name, tier.tier));
                EXPECT_EQ(done(), switches == 7 ? QStringList(QStringLiteral("save ") + game.name) : QStringList())
                    << game.name.toStdString() << ' ' << switches;
            }
        }
    }
}

TEST_F(MomentPolicyTest, IgnoresSwitchesOfOtherGamesAndTiers)
{
    followAll();
    settings.setAutoClipLeague(false);
    settings.setAutoClipWoW(false);
    settings.setAutoClipEpic(false);
    settings.setAutoClipBasic(false);
    Q_EMIT dota.momentDetected(moment(gameNames::dota2, ClipTier::medium));
    EXPECT_EQ(done(), QStringList(QStringLiteral("save Dota 2")));
}

struct DetectionCase {
    const char* name;
    bool autoClip;
    bool isRecording;
    bool starts;
};

class DetectionTest : public MomentPolicyTest, public testing::WithParamInterface<DetectionCase> { };

TEST_P(DetectionTest, StartsTheRecorder)
{
    followAll();
    settings.setAutoClipEnabled(GetParam().autoClip);
    isRecording = GetParam().isRecording;
    for (auto* watcher : {&league, &dota, &wow}) {
        Q_EMIT watcher->gameDetected();
        EXPECT_EQ(done(), GetParam().starts ? QStringList(QStringLiteral("start")) : QStringList());
    }
}

INSTANTIATE_TEST_SUITE_P(MomentPolicy, DetectionTest,
                         testing::Values(DetectionCase{"OnAndIdle", true, false, true},
                                         DetectionCase{"OnAndRecording", true, true, false},
                                         DetectionCase{"OffAndIdle", false, false, false},
                                         DetectionCase{"OffAndRecording", false, true, false}),
                         [](const auto& each) { return each.param.name; });

TEST_F(MomentPolicyTest, RunsWatchersByTheirSwitchesFromTheStart)
{
    settings.setAutoClipDota(false);
    followAll();
    const auto running = [this] {
        return QStringLiteral("%1%2%3")
            .arg(int(league.isRunning()))
            .arg(int(dota.isRunning()))
            .arg(int(wow.isRunning()));
    };
    EXPECT_EQ(running(), QStringLiteral("101"));
    settings.setAutoClipDota(true);
    EXPECT_EQ(running(), QStringLiteral("111"));
    settings.setAutoClipWoW(false);
    EXPECT_EQ(running(), QStringLiteral("110"));
    settings.setAutoClipEnabled(false);
    EXPECT_EQ(running(), QStringLiteral("000"));
    settings.setAutoClipLeague(false);
    settings.setAutoClipEnabled(true);
    EXPECT_EQ(running(), QStringLiteral("010"));
}

TEST_F(MomentPolicyTest, LeagueAndDotaMakeMatchesAndWoWDoesNot)
{
    followAll();
    Q_EMIT wow.gameDetected();
    EXPECT_FALSE(matches.inMatch());
    Q_EMIT dota.gameDetected();
    EXPECT_EQ(matches.current()->game, gameNames::dota2);
    Q_EMIT league.gameDetected();
    EXPECT_EQ(matches.current()->game, gameNames::leagueOfLegends);
    Q_EMIT wow.gameEnded();
    time.advance(60s);
    EXPECT_TRUE(matches.inMatch());
    Q_EMIT league.gameEnded();
    time.advance(10s);
    EXPECT_FALSE(matches.inMatch());
}

TEST_F(MomentPolicyTest, PassesALaterHeroToTheMatch)
{
    followAll();
    Q_EMIT dota.gameDetected();
    EXPECT_EQ(matches.current()->hero, QString());
    Q_EMIT dota.characterChanged(QStringLiteral("Zeus"));
    EXPECT_EQ(matches.current()->hero, QStringLiteral("Zeus"));
    Q_EMIT league.characterChanged({});
    EXPECT_EQ(matches.current()->hero, QStringLiteral("Zeus"));
}

TEST_F(MomentPolicyTest, PassesTheCharacterOfADetectedGame)
{
    test::ScriptedWatcher watcher({MatchState{true, QStringLiteral("Ahri")}, GameDetected{}});
    policy.followMatches(watcher, gameNames::leagueOfLegends);
    while (!matches.inMatch()) {
        QCoreApplication::sendPostedEvents();
    }
    EXPECT_EQ(matches.current()->hero, QStringLiteral("Ahri"));
}

TEST_F(MomentPolicyTest, EachGameHasItsOwnSwitch)
{
    settings.setAutoClipDota(false);
    EXPECT_TRUE(isGameEnabled(settings, QStringLiteral("League of Legends")));
    EXPECT_FALSE(isGameEnabled(settings, QStringLiteral("Dota 2")));
    EXPECT_TRUE(isGameEnabled(settings, QStringLiteral("World of Warcraft")));
    EXPECT_FALSE(isGameEnabled(settings, QStringLiteral("Chess")));
}

TEST_F(MomentPolicyTest, EachTierHasItsOwnSwitch)
{
    EXPECT_TRUE(isTierEnabled(settings, ClipTier::epic));
    EXPECT_TRUE(isTierEnabled(settings, ClipTier::medium));
    EXPECT_FALSE(isTierEnabled(settings, ClipTier::basic));
}

} // namespace
} // namespace quelto
