// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/memory/FreeMemory.h"

#include "tests/playback/surface/PlayerWindowTest.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <random>
#include <unistd.h>

namespace quelto {
namespace {

using namespace test;

/// How often players are opened and closed. QUELTO_PLAYER_OPENINGS chooses another number for a long run.
int openings()
{
    return qEnvironmentVariableIsSet("QUELTO_PLAYER_OPENINGS") ? qEnvironmentVariableIntValue("QUELTO_PLAYER_OPENINGS")
                                                               : 40;
}

/// Units: MiB.
double residentMemory()
{
    returnFreeMemory();
    QFile file(QStringLiteral("/proc/self/statm"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const auto pages = file.readAll().split(' ').at(1).toLongLong();
    return static_cast<double>(pages * ::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// As in the program: before the first thread starts.
[[maybe_unused]] const bool HasFewPools = (limitMemoryPools(), true);

/// Without the freed memory that the heap keeps.
double usedMemory()
{
    returnFreeMemory();
    return residentMemory();
}

bool hasThreadsOfPlayers()
{
    return std::ranges::any_of(std::filesystem::directory_iterator("/proc/self/task"), [](const auto& task) {
        QFile name(QString::fromStdString(task.path() / "comm"));
        // A thread that has ended since has no name.
        return name.open(QIODevice::ReadOnly) && name.readAll().startsWith("mpv");
    });
}

std::ptrdiff_t threadCount()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

class OpenCloseTest : public PlayerWindowTest {
protected:
    OpenCloseTest()
    {
        paths = {makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 1}),
                 makeClip(clips, QStringLiteral("b.mp4"), {.size = {640, 360}, .seconds = 1})};
        surface.reset();
        player.reset();
    }

    /// Does something so often, and compares the use of resources with that after the first times.
    void repeat(const std::function<void(int)>& open)
    {
        constexpr int WarmUp = 20;
        std::ptrdiff_t threads = 0;
        double memory = 0;
        for (int i = 0; i < WarmUp + openings(); ++i) {
            if (i == WarmUp) {
                surface.reset();
                player.reset();
                threads = settledThreads();
                memory = usedMemory();
            }
            open(i);
        }
        surface.reset();
        player.reset();
        // Qt and Mesa add a few threads of their own. A thread that is left behind each time adds many more.
        EXPECT_LT(settledThreads(), threads + openings() / 4);
        // Libraries free some memory a moment after a player has ended. OpenGL sometimes takes 20 to 30 MiB once,
        // however many players follow; a leak grows in the second round, too.
        double growth = 0;
        const auto isSmall = [&] { return (growth = usedMemory() - memory) < 20; };
        if (!QTest::qWaitFor(isSmall)) {
            memory = usedMemory();
            for (int i = 0; i < openings(); ++i) {
                open(i);
            }
            surface.reset();
            player.reset();
            EXPECT_TRUE(QTest::qWaitFor(isSmall)) << growth << " MiB";
        }
        std::printf("%d openings: %.1f MiB more\n", openings(), growth);
    }
    /// A random time, in which a clip is somewhere between closed and shown.
    void waitAMoment() { QTest::qWait(static_cast<int>(random() % 31)); }
    const QString& nextPath(int i) const { return paths[static_cast<std::size_t>(i) % paths.size()]; }

    std::vector<QString> paths;
    std::minstd_rand random{1};

private:
    /// Without the threads of players that are ending.
    static std::ptrdiff_t settledThreads()
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !hasThreadsOfPlayers(); }));
        return threadCount();
    }
};

TEST_F(OpenCloseTest, NewPlayersLeaveNothingBehind)
{
    repeat([this](int i) {
        player = makePlayer();
        addSurface(*player);
        player->open(nextPath(i));
        player->play(1);
        waitAMoment();
        // In either order.
        if (i % 2 == 0) {
            surface.reset();
        }
        player.reset();
        surface.reset();
    });
}

TEST_F(OpenCloseTest, PlayerOpensOneClipAfterTheOther)
{
    repeat([this](int i) {
        if (!player) {
            player = makePlayer();
            addSurface(*player);
        }
        player->open(nextPath(i));
        player->play(2);
        waitAMoment();
        player->seek(0.5);
        if (i % 20 == 19) {
            player->close();
            EXPECT_EQ(player->duration(), std::nullopt);
        }
    });
}

} // namespace
} // namespace quelto
