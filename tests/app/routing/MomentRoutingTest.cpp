// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/routing/MomentRouting.h"

#include "moments/scoring/GameNames.h"
#include "tests/base/tasks/ManualQueue.h"
#include "tests/library/clips/LibraryFixture.h"
#include "tests/moments/watcher/ScriptedWatcher.h"

namespace quelto {
namespace {

using namespace std::chrono_literals;

const auto EpicClip = "Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE (Zeus).mp4";
const auto MediumClip = "Dota 2 - 2026-03-01 20.15.07 [ORTA 45] Triple Kill (Zeus).mp4";
const auto BossClip = "World of Warcraft - 2026-03-01 20.15.07 [EFSANE 110] Boss- Fyrakk.mp4";
const auto BasicClip = "Dota 2 - 2026-03-01 20.15.07 [BASIT 15] Kill (Zeus).mp4";
const auto HotKeyClip = "Dota 2 - 2026-03-01 20.15.07.mp4";

class MomentRoutingTest : public test::LibraryFixture {
protected:
    void SetUp() override { settings.setAutoClipEnabled(true); }

    static Moment moment(const QString& game, ClipTier tier)
    {
        return {.game = game, .tier = tier, .score = 1, .label = QStringLiteral("label"), .seconds = 15, .events = {}};
    }

    /// What was done since the last call.
    QStringList done() { return std::exchange(m_done, {}); }

    void note(const QString& what) { m_done.append(what); }

    static QString words(const HudMessage& message)
    {
        return QStringLiteral("hud %1|%2|%3|%4")
            .arg(message.title, message.subtitle, message.error ? QStringLiteral("error") : QString(),
                 message.tier ? tagOf(*message.tier) : QString());
    }

    test::ManualTime time;
    test::ManualQueue queue{time};
    bool isRecording = true;
    MatchTracker matches{
        {.library = library, .main = queue, .store = MatchStore(folder.filePath(QStringLiteral("matches.json")))}};
    MomentRouting routing{
        settings, matches,
        MomentRouting::Actions{
            .isRecording = [this] { return isRecording; },
            .startRecording = [this] { note(QStringLiteral("start")); },
            .saveAutoClip = [this](const Moment& wanted) { note(QStringLiteral("save ") + wanted.game); },
            .reloadLibrary = [this] { note(QStringLiteral("reload")); },
            .playSound =
                [this](EventSound sound) {
                    note(sound == EventSound::hero ? QStringLiteral("Hero") : QStringLiteral("Glass"));
                },
            .showHud = [this](const HudMessage& message) { note(words(message)); },
            .showToast = [this](const QString& text) { note(QStringLiteral("toast ") + text); },
            .notifyDesktop =
                [this](const MatchNotification& notification) {
                    note(QStringLiteral("desktop ") + notification.body);
                }}};
    test::ScriptedWatcher league;
    test::ScriptedWatcher dota;
    test::ScriptedWatcher wow;

    void followAll()
    {
        routing.followMatches(league, gameNames::leagueOfLegends);
        routing.followMatches(dota, gameNames::dota2);
        routing.follow(wow, gameNames::worldOfWarcraft);
    }

private:
    QStringList m_done;
};

TEST_F(MomentRoutingTest, AMomentBecomesAClipOnlyIfEverySwitchLetsIt)
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

TEST_F(MomentRoutingTest, AnotherGamesSwitchAndAnotherTiersDoNotMatter)
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

class DetectionTest : public MomentRoutingTest, public testing::WithParamInterface<DetectionCase> { };

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

INSTANTIATE_TEST_SUITE_P(MomentRouting, DetectionTest,
                         testing::Values(DetectionCase{"OnAndIdle", true, false, true},
                                         DetectionCase{"OnAndRecording", true, true, false},
                                         DetectionCase{"OffAndIdle", false, false, false},
                                         DetectionCase{"OffAndRecording", false, true, false}),
                         [](const auto& each) { return each.param.name; });

TEST_F(MomentRoutingTest, TheWatchersFollowTheirSwitchesFromTheStart)
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

TEST_F(MomentRoutingTest, LeagueAndDotaMakeMatchesAndWoWDoesNot)
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

TEST_F(MomentRoutingTest, AHeroThatIsLearntReachesTheMatch)
{
    followAll();
    Q_EMIT dota.gameDetected();
    EXPECT_EQ(matches.current()->hero, QString());
    Q_EMIT dota.characterChanged(QStringLiteral("Zeus"));
    EXPECT_EQ(matches.current()->hero, QStringLiteral("Zeus"));
    Q_EMIT league.characterChanged({});
    EXPECT_EQ(matches.current()->hero, QStringLiteral("Zeus"));
}

TEST_F(MomentRoutingTest, ADetectedGameBringsItsCharacterAlong)
{
    test::ScriptedWatcher watcher({MatchState{true, QStringLiteral("Ahri")}, GameDetected{}});
    routing.followMatches(watcher, gameNames::leagueOfLegends);
    while (!matches.inMatch()) {
        QCoreApplication::sendPostedEvents();
    }
    EXPECT_EQ(matches.current()->hero, QStringLiteral("Ahri"));
}

struct SavedCase {
    const char* name;
    const char* file;
    bool inMatch;
    /// Whether sound and on-screen notice are switched on.
    bool playSound;
    bool showOverlay;
    const char* expected;
};

class SavedClipTest : public MomentRoutingTest, public testing::WithParamInterface<SavedCase> { };

TEST_P(SavedClipTest, IsTold)
{
    const auto& each = GetParam();
    settings.setPlaySound(each.playSound);
    settings.setShowOverlay(each.showOverlay);
    if (each.inMatch) {
        matches.gameStarted(gameNames::dota2, QStringLiteral("Zeus"));
    }
    const auto file = makeFile(each.file);
    routing.clipSaved(file);
    EXPECT_EQ(done().join(QStringLiteral(" / ")), QString::fromUtf8(each.expected));
    if (each.inMatch) {
        EXPECT_EQ(matches.current()->clips, QStringList(file));
    }
}

INSTANTIATE_TEST_SUITE_P(
    MomentRouting, SavedClipTest,
    testing::Values(
        SavedCase{"EpicOutsideAMatch", EpicClip, false, true, true,
                  "reload / Hero / hud Oto klip • Efsane|RAMPAGE (Zeus)||EFSANE / toast Oto klip (Efsane): RAMPAGE "
                  "(Zeus)"},
        SavedCase{"MediumOutsideAMatch", MediumClip, false, true, true,
                  "reload / Glass / hud Oto klip • Orta|Triple Kill (Zeus)||ORTA / toast Oto klip (Orta): Triple Kill "
                  "(Zeus)"},
        SavedCase{"AnotherGamesInAMatch", BossClip, true, true, true, "reload"},
        SavedCase{"BasicOutsideAMatch", BasicClip, false, true, true,
                  "reload / Glass / hud Oto klip • Basit|Kill (Zeus)||BASIT / toast Oto klip (Basit): Kill (Zeus)"},
        SavedCase{"HotKeyOutsideAMatch", HotKeyClip, false, true, true,
                  "reload / Glass / hud Klip kaydedildi|Dota 2 - 2026-03-01 20.15.07|| / toast Klip kaydedildi"},
        SavedCase{"HotKeyWithoutSound", HotKeyClip, false, false, true,
                  "reload / hud Klip kaydedildi|Dota 2 - 2026-03-01 20.15.07|| / toast Klip kaydedildi"},
        SavedCase{"HotKeyWithoutOverlay", HotKeyClip, false, true, false, "reload / Glass / toast Klip kaydedildi"},
        SavedCase{"HotKeyQuietly", HotKeyClip, false, false, false, "reload / toast Klip kaydedildi"},
        SavedCase{"EpicInAMatch", EpicClip, true, true, true, "reload"},
        SavedCase{"BasicInAMatch", BasicClip, true, true, true, "reload"},
        SavedCase{"HotKeyInAMatch", HotKeyClip, true, true, true,
                  "reload / Glass / hud Klip kaydedildi|Dota 2 - 2026-03-01 20.15.07|| / toast Klip kaydedildi"}),
    [](const auto& each) { return each.param.name; });

TEST_F(MomentRoutingTest, AFailedSaveIsTold)
{
    routing.saveFailed(QStringLiteral("disk full"));
    EXPECT_EQ(done().join(u'/'), QStringLiteral("hud Klip kaydedilemedi|disk full|error|/toast disk full"));
    settings.setShowOverlay(false);
    routing.saveFailed(QStringLiteral("disk full"));
    EXPECT_EQ(done().join(u'/'), QStringLiteral("toast disk full"));
}

TEST_F(MomentRoutingTest, AMatchThatIsOverIsToldOnceOnTheScreenByEarAndByTheDesktop)
{
    const auto play = [this] {
        matches.gameStarted(gameNames::dota2, QStringLiteral("Zeus"));
        matches.clipSaved(makeFile(EpicClip));
        matches.gameEnded(gameNames::dota2);
        time.advance(60s);
    };
    play();
    EXPECT_EQ(done().join(u'/'),
              QStringLiteral("hud Maç bitti • Dota 2 • Zeus|1 klip • 1 Efsane • incelemek için tıkla||EFSANE/Hero/"
                             "desktop 1 klip • 1 Efsane • incelemek için tıkla — özeti görmek için tıkla"));
    settings.setShowOverlay(false);
    settings.setPlaySound(false);
    play();
    EXPECT_EQ(done().size(), 1) << "the desktop's notice depends on no switch";
}

} // namespace
} // namespace quelto
