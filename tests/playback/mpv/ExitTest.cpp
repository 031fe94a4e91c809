// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/EndingWork.h"

#include "tests/media/probe/CounterClip.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <cstdio>
#include <thread>

namespace quelto {
namespace {

using namespace test;

TEST(PlayerExitTest, ProcessEndsRightAfterItsPlayer)
{
    const GeneratedClips clips;
    const auto path = makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 2});
    for (int i = 0; i < 20; ++i) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QStringLiteral(PLAYER_EXIT), {path, QString::number(i * 7)});
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << i;
        EXPECT_EQ(process.exitCode(), 0) << i;
    }
}

TEST(EndingWorkDeathTest, ExitWaitsForRunningWork)
{
    const auto exitDuringWork = [] {
        std::thread([work = EndingWork()] {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            std::fputs("ended\n", stderr);
        }).detach();
        std::exit(0);
    };
    EXPECT_EXIT(exitDuringWork(), testing::ExitedWithCode(0), "ended");
}

} // namespace
} // namespace quelto
