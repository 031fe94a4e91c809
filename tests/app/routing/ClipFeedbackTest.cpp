// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/routing/ClipFeedback.h"

#include "moments/scoring/GameNames.h"
#include "tests/base/tasks/ManualQueue.h"
#include "tests/library/clips/LibraryFixture.h"

namespace quelto {
namespace {

using namespace std::chrono_literals;

const auto EpicClip = "Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE (Zeus).mp4";
const auto MediumClip = "Dota 2 - 2026-03-01 20.15.07 [ORTA 45] Triple Kill (Zeus).mp4";
const auto BossClip = "World of Warcraft - 2026-03-01 20.15.07 [EFSANE 110] Boss- Fyrakk.mp4";
const auto BasicClip = "Dota 2 - 2026-03-01 20.15.07 [BASIT 15] Kill (Zeus).mp4";
const auto HotKeyClip = "Dota 2 - 2026-03-01 20.15.07.mp4";

const Moment EpicMoment{.game = gameNames::dota2, .tier = ClipTier::epic, .score = 95, .label = {}, .events = {}};
const Moment MediumMoment{.game = gameNames::dota2, .tier = ClipTier::medium, .score = 45, .label = {}, .events = {}};
const Moment BasicMoment{.game = gameNames::dota2, .tier = ClipTier::basic, .score = 15, .label = {}, .events = {}};

class ClipFeedbackTest : public test::LibraryFixture {
protected:
    /// The actions since the last call.
    QStringList done() { return std::exchange(m_done, {}); }

    static QString textOf(const HudMessage& message)
    {
        return QStringLiteral("hud %1|%2|%3|%4%5")
            .arg(message.title, message.subtitle, message.error ? QStringLiteral("error") : QString(),
                 message.tier ? tagOf(*message.tier) : QString(),
                 message.isNotifiedToo ? QStringLiteral("|notified too") : QString());
    }

    test::ManualTime time;
    test::ManualQueue queue{time};
    MatchTracker matches{{.library = library,
                          .main = queue,
                          .work = queue,
                          .store = MatchStore(folder.filePath(QStringLiteral("matches.json")))}};
    ClipFeedback feedback{
        settings, matches,
        ClipFeedback::Actions{
            .reloadLibrary = [this] { m_done.append(QStringLiteral("reload")); },
            .playSound =
                [this](EventSound sound) {
                    m_done.append(sound == EventSound::hero ? QStringLiteral("Hero") : QStringLiteral("Glass"));
                },
            .showHud = [this](const HudMessage& message) { m_done.append(textOf(message)); },
            .showToast = [this](const QString& text) { m_done.append(QStringLiteral("toast ") + text); },
            .notifyDesktop =
                [this](const MatchNotification& notification) {
                    m_done.append(QStringLiteral("desktop ") + notification.body);
                }}};

private:
    QStringList m_done;
};

struct SavedCase {
    const char* name;
    const char* file;
    std::optional<Moment> moment;
    bool inMatch;
    /// The preferences for the sound and the HUD.
    bool playSound;
    bool showOverlay;
    const char* expected;
};

class SavedClipTest : public ClipFeedbackTest, public testing::WithParamInterface<SavedCase> { };

TEST_P(SavedClipTest, CausesWhatTheSettingsAllow)
{
    const auto& each = GetParam();
    settings.setPlaySound(each.playSound);
    settings.setShowOverlay(each.showOverlay);
    if (each.inMatch) {
        matches.gameStarted(gameNames::dota2, QStringLiteral("Zeus"));
    }
    const auto file = makeFile(each.file);
    feedback.clipSaved({.path = file, .duration = 30, .moment = each.moment});
    EXPECT_EQ(done().join(QStringLiteral(" / ")), QString::fromUtf8(each.expected));
    if (each.inMatch) {
        EXPECT_EQ(matches.current()->clips, QStringList(file));
    }
}

INSTANTIATE_TEST_SUITE_P(
    ClipFeedback, SavedClipTest,
    testing::Values(
        SavedCase{"EpicOutsideAMatch", EpicClip, EpicMoment, false, true, true,
                  "reload / Hero / hud Oto klip • Efsane|RAMPAGE (Zeus)||EFSANE / toast Oto klip (Efsane): RAMPAGE "
                  "(Zeus)"},
        SavedCase{"MediumOutsideAMatch", MediumClip, MediumMoment, false, true, true,
                  "reload / Glass / hud Oto klip • Orta|Triple Kill (Zeus)||ORTA / toast Oto klip (Orta): Triple Kill "
                  "(Zeus)"},
        SavedCase{"AnotherGamesInAMatch", BossClip, EpicMoment, true, true, true, "reload"},
        SavedCase{"BasicOutsideAMatch", BasicClip, BasicMoment, false, true, true,
                  "reload / Glass / hud Oto klip • Basit|Kill (Zeus)||BASIT / toast Oto klip (Basit): Kill (Zeus)"},
        SavedCase{"HotKeyOutsideAMatch", HotKeyClip, std::nullopt, false, true, true,
                  "reload / Glass / hud Klip kaydedildi|Dota 2 - 2026-03-01 20.15.07|| / toast Klip kaydedildi"},
        SavedCase{"HotKeyWithoutSound", HotKeyClip, std::nullopt, false, false, true,
                  "reload / hud Klip kaydedildi|Dota 2 - 2026-03-01 20.15.07|| / toast Klip kaydedildi"},
        SavedCase{"HotKeyWithoutOverlay", HotKeyClip, std::nullopt, false, true, false,
                  "reload / Glass / toast Klip kaydedildi"},
        SavedCase{"HotKeyQuietly", HotKeyClip, std::nullopt, false, false, false, "reload / toast Klip kaydedildi"},
        SavedCase{"EpicInAMatch", EpicClip, EpicMoment, true, true, true, "reload"},
        SavedCase{"BasicInAMatch", BasicClip, BasicMoment, true, true, true, "reload"},
        SavedCase{"HotKeyInAMatch", HotKeyClip, std::nullopt, true, true, true,
                  "reload / Glass / hud Klip kaydedildi|Dota 2 - 2026-03-01 20.15.07|| / toast Klip kaydedildi"}),
    [](const auto& each) { return each.param.name; });

TEST_F(ClipFeedbackTest, TakesTheTierFromTheMomentAndNotFromTheFileName)
{
    feedback.clipSaved({.path = makeFile(EpicClip), .duration = 30, .moment = std::nullopt});
    EXPECT_EQ(done().at(1), QStringLiteral("Glass"));
}

TEST_F(ClipFeedbackTest, ShowsAFailedSave)
{
    const auto message = QStringLiteral("Klip yazılamadı: disk full");
    const auto reason = QStringLiteral("disk full");
    feedback.saveFailed(message, reason);
    EXPECT_EQ(done().join(u'/'),
              QStringLiteral("hud Klip kaydedilemedi|disk full|error|/toast Klip yazılamadı: disk full"))
        << "the HUD's title says that the clip was not saved, the toast has no title";
    settings.setShowOverlay(false);
    feedback.saveFailed(message, reason);
    EXPECT_EQ(done().join(u'/'), QStringLiteral("toast Klip yazılamadı: disk full"));
}

TEST_F(ClipFeedbackTest, ShowsTheEndOfAMatchByHudSoundAndDesktopNotification)
{
    const auto play = [this] {
        matches.gameStarted(gameNames::dota2, QStringLiteral("Zeus"));
        matches.clipSaved(makeFile(EpicClip));
        matches.gameEnded(gameNames::dota2);
        time.advance(60s);
    };
    play();
    EXPECT_EQ(done().join(u'/'),
              QStringLiteral(
                  "hud Maç bitti • Dota 2 • Zeus|1 klip • 1 Efsane • incelemek için tıkla||EFSANE|notified too/Hero/"
                  "desktop 1 klip • 1 Efsane • incelemek için tıkla — özeti görmek için tıkla"));
    settings.setShowOverlay(false);
    settings.setPlaySound(false);
    play();
    EXPECT_EQ(done().size(), 1) << "no switch turns the desktop notification off";
}

} // namespace
} // namespace quelto
