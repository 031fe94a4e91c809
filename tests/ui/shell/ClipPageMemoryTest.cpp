// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/memory/FreeMemory.h"
#include "base/tasks/BackgroundThreads.h"
#include "playback/mpv/MpvPlayer.h"
#include "ui/player/ClipPlayer.h"

#include "tests/media/probe/CounterClip.h"
#include "tests/ui/shell/ShellFixture.h"

#include <clocale>
#include <random>
#include <unistd.h>

namespace quelto {
namespace {

/// As in the program: before the first thread starts.
[[maybe_unused]] const bool HasFewPoolsOfMemory = (limitMemoryPools(), true);

/// How often the page is opened. QUELTO_PLAYER_OPENINGS chooses another number for a long run.
int pageOpenings()
{
    const auto* const name = "QUELTO_PLAYER_OPENINGS";
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : 20;
}

/// Units: MiB.
double residentMebibytes()
{
    returnFreeMemory();
    QFile file(QStringLiteral("/proc/self/statm"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return static_cast<double>(file.readAll().split(' ').at(1).toLongLong() * ::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// The page with the real player, in the real window.
class ClipPageMemoryTest : public test::ShellFixture {
protected:
    void SetUp() override
    {
        // The constructor of the application takes the user's.
        std::setlocale(LC_NUMERIC, "C");
        ShellFixture::SetUp();
        const auto work = [this](Task task) { threads.post(std::move(task)); };
        PlaybackForQml::instance.emplace(PlaybackForQml::Parts{
            .model = {.main = realTime, .work = work}, .createPlayer = [this, work] {
                return std::make_unique<MpvPlayer>(MpvPlayer::Dependencies{.main = realTime, .work = work});
            }});
        path = test::makeClip(clips, QStringLiteral("Game - a.mp4"), {.size = {640, 360}, .seconds = 1});
    }
    void TearDown() override
    {
        navigation->closeClip();
        ShellFixture::TearDown();
    }
    void openAndLeave(int milliseconds)
    {
        navigation->openClip(path);
        QTest::qWait(milliseconds);
        navigation->closeClip();
    }

    MainQueue realTime;
    BackgroundThreads threads{QStringLiteral("clips"), 1};
    test::GeneratedClips clips;
    QString path;
};

TEST_F(ClipPageMemoryTest, OpeningManyClipsTakesNoMoreMemory)
{
    std::minstd_rand random(1);
    const auto openSome = [&](int count) {
        for (int i = 0; i < count; ++i) {
            openAndLeave(static_cast<int>(random() % 60));
        }
        QTest::qWait(500);
    };
    openSome(20);
    const auto before = residentMebibytes();
    openSome(pageOpenings());
    const auto growth = residentMebibytes() - before;
    std::printf("memory grew by %.1f MiB\n", growth);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // sanitizers keep memory of their own
    EXPECT_LT(growth, 20);
#endif
}

} // namespace
} // namespace quelto
