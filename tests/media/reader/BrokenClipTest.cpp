// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ClipReader.h"

#include "tests/media/reader/GeneratedClips.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

extern "C" {
#include <libavutil/mem.h>
}

#include <sys/resource.h>
#include <sys/stat.h>

#include <random>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class BrokenClipTest : public testing::Test {
protected:
    BrokenClipTest() { testing::internal::CaptureStderr(); }

    /// Libraries must not write to stderr.
    void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

    static void expectEmpty(const ClipPreview& preview)
    {
        EXPECT_TRUE(preview.thumbnail.isNull());
        EXPECT_EQ(preview.info.duration, 0);
        EXPECT_EQ(preview.info.width, 0);
        EXPECT_EQ(preview.info.height, 0);
        EXPECT_EQ(preview.info.fps, 0);
    }

    QByteArray goodClip(const QString& encoding = {}) const
    {
        return test::GeneratedClips::read(
            clips.make(QStringLiteral("good.mp4"),
                       QStringLiteral("-f lavfi -i testsrc=s=320x180:r=30:d=4 -f lavfi -i sine=d=4 "
                                      "-c:v libx264 -g 30 -c:a aac ") +
                           encoding));
    }

    test::GeneratedClips clips;
};

TEST_F(BrokenClipTest, FilesThatAreNotClipsAreEmpty)
{
    expectEmpty(readClip(QString()));
    expectEmpty(readClip(clips.path(QStringLiteral("none.mp4"))));
    expectEmpty(readClip(clips.path(QStringLiteral("."))));
    expectEmpty(readClip(QStringLiteral("/dev/zero")));
    expectEmpty(readClip(clips.write(QStringLiteral("empty.mp4"), {})));
    expectEmpty(readClip(clips.write(QStringLiteral("text.mp4"), QByteArray(100000, 'x'))));
    expectEmpty(readClip(clips.write(QStringLiteral("zeros.mp4"), QByteArray(100000, '\0'))));
}

TEST_F(BrokenClipTest, PipeDoesNotBlock)
{
    const auto path = clips.path(QStringLiteral("pipe.mp4"));
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    expectEmpty(readClip(path));
}

TEST_F(BrokenClipTest, PlaylistsAreNotFollowed)
{
    clips.write(QStringLiteral("real.mp4"), goodClip());
    expectEmpty(readClip(clips.write(QStringLiteral("hls.mp4"),
                                     "#EXTM3U\n#EXT-X-TARGETDURATION:4\n#EXTINF:4,\nreal.mp4\n#EXT-X-ENDLIST\n")));
    expectEmpty(readClip(clips.write(QStringLiteral("concat.mp4"), "ffconcat version 1.0\nfile real.mp4\n")));
}

TEST_F(BrokenClipTest, AudioOnlyFileHasDurationOnly)
{
    const auto preview = readClip(clips.make(QStringLiteral("a.mp4"), QStringLiteral("-f lavfi -i sine=d=2 -c:a aac")));
    EXPECT_NEAR(preview.info.duration, 2, 0.1);
    EXPECT_EQ(preview.info.width, 0);
    EXPECT_TRUE(preview.thumbnail.isNull());
}

TEST_F(BrokenClipTest, ClipWithoutIndexIsEmpty)
{
    const auto bytes = goodClip();
    expectEmpty(readClip(clips.write(QStringLiteral("cut.mp4"), bytes.first(bytes.size() / 2))));
}

TEST_F(BrokenClipTest, ClipWithoutMediaDataHasMetadata)
{
    const auto bytes = goodClip(QStringLiteral("-movflags faststart"));
    const auto preview = readClip(clips.write(QStringLiteral("cut.mp4"), bytes.first(bytes.indexOf("mdat") + 100)));
    EXPECT_NEAR(preview.info.duration, 4, 0.1);
    EXPECT_EQ(preview.info.width, 320);
    EXPECT_TRUE(preview.thumbnail.isNull());
}

TEST_F(BrokenClipTest, TruncatedClipHasThumbnail)
{
    const auto bytes = goodClip(QStringLiteral("-movflags faststart"));
    const auto preview = readClip(clips.write(QStringLiteral("cut.mp4"), bytes.first(bytes.size() * 3 / 4)));
    EXPECT_EQ(preview.thumbnail.size(), QSize(320, 180));
}

TEST_F(BrokenClipTest, DeletedClipIsEmpty)
{
    const auto path = clips.write(QStringLiteral("a.mp4"), goodClip());
    ASSERT_FALSE(readClip(path).thumbnail.isNull());
    ASSERT_TRUE(QFile::remove(path));
    expectEmpty(readClip(path));
}

TEST_F(BrokenClipTest, HugeFrameSizeIsNotDecoded)
{
    auto bytes = goodClip();
    auto* entry = bytes.data() + bytes.indexOf("avc1", bytes.indexOf("stsd"));
    qToBigEndian<quint16>(20000, entry + 28);
    qToBigEndian<quint16>(20000, entry + 30);
    const auto preview = readClip(clips.write(QStringLiteral("huge.mp4"), bytes));
    EXPECT_EQ(preview.info.width, 20000);
    EXPECT_TRUE(preview.thumbnail.isNull());
}

TEST_F(BrokenClipTest, HugeFrameSizeInBitstreamIsNotDecoded)
{
    auto bytes = test::GeneratedClips::read(
        clips.make(QStringLiteral("a.mov"),
                   QStringLiteral("-f lavfi -i testsrc=s=64x64:r=10:d=0.5 -c:v mjpeg -pix_fmt yuvj420p")));
    for (auto frame = bytes.indexOf("\xff\xc0"); frame >= 0; frame = bytes.indexOf("\xff\xc0", frame + 1)) {
        qToBigEndian<quint16>(60000, bytes.data() + frame + 5);
        qToBigEndian<quint16>(60000, bytes.data() + frame + 7);
    }
    const auto preview = readClip(clips.write(QStringLiteral("huge.mov"), bytes));
    EXPECT_EQ(preview.info.width, 64);
    EXPECT_TRUE(preview.thumbnail.isNull());
}

TEST_F(BrokenClipTest, HugeIndexOfPicturesIsReadInTime)
{
    for (const quint32 distance : {0U, 1U}) {
        auto bytes = goodClip();
        const auto put = [&](const char* box, qsizetype at, quint32 value) {
            qToBigEndian(value, bytes.data() + bytes.indexOf(box) + at);
        };
        constexpr quint32 Count = 200'000;
        put("stsz", 8, 1);
        put("stsz", 12, Count);
        // All samples are in one chunk.
        put("stsc", 16, Count);
        put("stts", 12, Count);
        put("stts", 16, distance);
        const auto start = HostClock::now();
        EXPECT_TRUE(readClip(clips.write(QStringLiteral("endless.mp4"), bytes)).thumbnail.isNull());
        EXPECT_LT(HostClock::now() - start, 5s);
    }
}

/// Declares a huge sample count in a video track, in an audio track and in a fragment.
TEST_F(BrokenClipTest, DeclaredSamplesDoNotAllocateMemory)
{
    constexpr quint32 Count = 40'000'000;
    const auto withHugeCount = [](QByteArray bytes, qsizetype from) {
        const auto put = [&](const char* box, qsizetype at, quint32 value) {
            qToBigEndian(value, bytes.data() + bytes.indexOf(box, from) + at);
        };
        put("stsz", 8, 1);
        put("stsz", 12, Count);
        put("stsc", 16, Count);
        put("stts", 12, Count);
        return bytes;
    };
    const auto good = goodClip();
    auto fragment = goodClip(QStringLiteral("-movflags frag_keyframe+empty_moov"));
    auto* run = fragment.data() + fragment.indexOf("trun");
    // No per-sample fields, so that the box size stays valid.
    qToBigEndian<quint32>(0, run + 4);
    qToBigEndian(Count, run + 8);
    readClip(clips.write(QStringLiteral("good.mp4"), good));
    const auto peakMiB = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss / 1024;
    };
    const auto before = peakMiB();
    expectEmpty(readClip(clips.write(QStringLiteral("video.mp4"), withHugeCount(good, good.indexOf("vide")))));
    expectEmpty(readClip(clips.write(QStringLiteral("audio.mp4"), withHugeCount(good, good.indexOf("soun")))));
    expectEmpty(readClip(clips.write(QStringLiteral("fragment.mp4"), fragment)));
    EXPECT_LT(peakMiB() - before, 50);
}

TEST_F(BrokenClipTest, AcceptsLongUncompressedAudio)
{
    // More audio frames than the maximum sample count.
    const auto path =
        clips.make(QStringLiteral("long.mov"),
                   QStringLiteral("-f lavfi -i testsrc=s=64x64:r=1:d=660 -f lavfi -i anullsrc=r=8000:cl=mono "
                                  "-t 660 -c:v libx264 -preset ultrafast -c:a pcm_u8"));
    const auto preview = readClip(path);
    EXPECT_NEAR(preview.info.duration, 660, 1);
    EXPECT_FALSE(preview.thumbnail.isNull());
}

TEST_F(BrokenClipTest, LargeAllocationsStayPossibleAfterReading)
{
    readClip(clips.write(QStringLiteral("good.mp4"), goodClip()));
    constexpr std::size_t Large = std::size_t{900} << 20U;
    void* const block = av_malloc(Large);
    EXPECT_NE(block, nullptr);
    av_free(block);
}

TEST_F(BrokenClipTest, StopRequestAndTimeLimitEndReading)
{
    const auto path = clips.write(QStringLiteral("a.mp4"), goodClip());
    std::stop_source stop;
    EXPECT_FALSE(readClip(path, stop.get_token()).thumbnail.isNull());
    stop.request_stop();
    expectEmpty(readClip(path, stop.get_token()));
    expectEmpty(readClip(path, {}, 0s));
}

TEST_F(BrokenClipTest, RandomDamageDoesNotCrash)
{
    const auto bytes = goodClip(QStringLiteral("-movflags faststart"));
    const auto indexEnd = bytes.indexOf("mdat");
    std::minstd_rand random(5);
    for (int round = 0; round < 150; ++round) {
        auto damaged = bytes;
        // The first rounds damage the index only.
        const auto range = static_cast<unsigned>(round < 100 ? indexEnd : bytes.size());
        for (int i = 0; i < 1 + round % 8; ++i) {
            damaged[static_cast<qsizetype>(random() % range)] = static_cast<char>(random());
        }
        const auto preview = readClip(clips.write(QStringLiteral("damaged.mp4"), damaged));
        EXPECT_GE(preview.info.duration, 0);
        EXPECT_LE(std::max(preview.thumbnail.width(), preview.thumbnail.height()), 640);
    }
}

} // namespace
} // namespace quelto
