// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/mux/Mp4Muxer.h"

#include "base/files/AtomicFile.h"
#include "tests/base/disk/SmallDisk.h"
#include "tests/media/probe/EncodedScene.h"
#include "tests/media/probe/Mp4Boxes.h"
#include "tests/media/probe/Probe.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <system_error>

namespace quelto {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t TicksPerFrame = Mp4Muxer::videoTicksPerSecond / 60;

std::vector<EncodedFramePtr> scene(int frames)
{
    std::vector<HostTime> times;
    for (int i = 0; i < frames; ++i) {
        times.push_back(HostTime(1s) + HostDuration(1s) * i / 60);
    }
    return test::encodedScene(
        {.codec = VideoCodec::h264, .size = QSize(160, 90), .framesPerSecond = 60, .bitsPerSecond = 500'000}, times);
}

qint64 bytesOf(const std::vector<EncodedFramePtr>& frames)
{
    qint64 bytes = 0;
    for (const auto& frame : frames) {
        bytes += static_cast<qint64>(frame->data.size());
    }
    return bytes;
}

void writeAll(const std::vector<EncodedFramePtr>& frames, std::int64_t firstTick, AtomicFile& file)
{
    const auto& format = *frames.front()->format;
    Mp4Muxer muxer(file, {.codec = format.codec, .size = format.size, .parameterSets = format.parameterSets}, {});
    muxer.begin({});
    auto time = firstTick;
    for (const auto& frame : frames) {
        muxer.write(0,
                    {.data = frame->data,
                     .presentationTime = time,
                     .decodingTime = time,
                     .duration = TicksPerFrame,
                     .isSync = frame->isKeyframe()});
        time += TicksPerFrame;
    }
    muxer.finish();
}

TEST(Mp4Muxer, MovesTheIndexToTheFrontWithoutUnusedSpace)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("moved.mp4"));
    const auto frames = scene(90);
    {
        AtomicFile file(folder.path());
        writeAll(frames, 0, file);
        file.flush();
        ASSERT_TRUE(file.tryPublish(QStringLiteral("moved.mp4")));
    }
    // The muxer leaves room for the larger header of a data box above 4 GiB.
    EXPECT_EQ(
        test::readMp4Boxes(path).order,
        (std::vector{QStringLiteral("ftyp"), QStringLiteral("moov"), QStringLiteral("free"), QStringLiteral("mdat")}));
    EXPECT_LT(QFileInfo(path).size() - bytesOf(frames), 2500);
    EXPECT_EQ(test::decodingErrors(path), QByteArray());
    EXPECT_EQ(test::streamsOf(path)[0][u"nb_frames"].toString(), QStringLiteral("90"));
}

TEST(Mp4Muxer, StartsALateTrackWithAnEmptyEdit)
{
    const QTemporaryDir folder;
    {
        AtomicFile file(folder.path());
        writeAll(scene(30), Mp4Muxer::videoTicksPerSecond, file);
        file.flush();
        ASSERT_TRUE(file.tryPublish(QStringLiteral("late.mp4")));
    }
    const auto stream = test::streamsOf(folder.filePath(QStringLiteral("late.mp4")))[0];
    EXPECT_NEAR(stream[u"start_time"].toString().toDouble(), 1.0, 0.001);
    EXPECT_NEAR(stream[u"duration"].toString().toDouble(), 0.5, 0.001);
}

TEST(Mp4Muxer, ReportsADiskThatFillsUpWhileTheDataIsMoved)
{
    // The index is larger than the room that is left.
    std::vector<EncodedFramePtr> frames;
    for (const auto second = scene(60); frames.size() < 6000;) {
        frames.insert(frames.end(), second.begin(), second.end());
    }
    const test::SmallDisk disk(bytesOf(frames) + 8192);
    if (!disk.isMounted()) {
        GTEST_SKIP() << "needs to mount a file system";
    }
    try {
        AtomicFile file(disk.path());
        writeAll(frames, 0, file);
        FAIL() << "The disk did not fill up";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code().value(), ENOSPC);
    }
    EXPECT_TRUE(QDir(disk.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

} // namespace
} // namespace quelto
