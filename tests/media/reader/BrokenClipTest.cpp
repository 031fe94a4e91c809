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

    /// No library may talk about what it found.
    void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

    static void expectNothing(const ClipReader& reading)
    {
        EXPECT_TRUE(reading.picture.isNull());
        EXPECT_EQ(reading.facts.duration, 0);
        EXPECT_EQ(reading.facts.width, 0);
        EXPECT_EQ(reading.facts.height, 0);
        EXPECT_EQ(reading.facts.fps, 0);
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

TEST_F(BrokenClipTest, WhatIsNoClipHasNothing)
{
    expectNothing(readClip(QString()));
    expectNothing(readClip(clips.path(QStringLiteral("none.mp4"))));
    expectNothing(readClip(clips.path(QStringLiteral("."))));
    expectNothing(readClip(QStringLiteral("/dev/zero")));
    expectNothing(readClip(clips.write(QStringLiteral("empty.mp4"), {})));
    expectNothing(readClip(clips.write(QStringLiteral("text.mp4"), QByteArray(100000, 'x'))));
    expectNothing(readClip(clips.write(QStringLiteral("zeros.mp4"), QByteArray(100000, '\0'))));
}

TEST_F(BrokenClipTest, PipeDoesNotMakeItWait)
{
    const auto path = clips.path(QStringLiteral("pipe.mp4"));
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    expectNothing(readClip(path));
}

TEST_F(BrokenClipTest, PlayListLeadsNowhere)
{
    clips.write(QStringLiteral("real.mp4"), goodClip());
    expectNothing(readClip(clips.write(QStringLiteral("hls.mp4"),
                                       "#EXTM3U\n#EXT-X-TARGETDURATION:4\n#EXTINF:4,\nreal.mp4\n#EXT-X-ENDLIST\n")));
    expectNothing(readClip(clips.write(QStringLiteral("concat.mp4"), "ffconcat version 1.0\nfile real.mp4\n")));
}

TEST_F(BrokenClipTest, SoundAloneHasALengthAndNothingElse)
{
    const auto reading = readClip(clips.make(QStringLiteral("a.mp4"), QStringLiteral("-f lavfi -i sine=d=2 -c:a aac")));
    EXPECT_NEAR(reading.facts.duration, 2, 0.1);
    EXPECT_EQ(reading.facts.width, 0);
    EXPECT_TRUE(reading.picture.isNull());
}

TEST_F(BrokenClipTest, ClipWithoutItsIndexHasNothing)
{
    const auto bytes = goodClip();
    expectNothing(readClip(clips.write(QStringLiteral("cut.mp4"), bytes.first(bytes.size() / 2))));
}

TEST_F(BrokenClipTest, ClipWithoutItsDataHasItsFacts)
{
    const auto bytes = goodClip(QStringLiteral("-movflags faststart"));
    const auto reading = readClip(clips.write(QStringLiteral("cut.mp4"), bytes.first(bytes.indexOf("mdat") + 100)));
    EXPECT_NEAR(reading.facts.duration, 4, 0.1);
    EXPECT_EQ(reading.facts.width, 320);
    EXPECT_TRUE(reading.picture.isNull());
}

TEST_F(BrokenClipTest, ClipWhoseEndIsMissingHasItsPicture)
{
    const auto bytes = goodClip(QStringLiteral("-movflags faststart"));
    const auto reading = readClip(clips.write(QStringLiteral("cut.mp4"), bytes.first(bytes.size() * 3 / 4)));
    EXPECT_EQ(reading.picture.size(), QSize(320, 180));
}

TEST_F(BrokenClipTest, ClipThatVanishesHasNothing)
{
    const auto path = clips.write(QStringLiteral("a.mp4"), goodClip());
    ASSERT_FALSE(readClip(path).picture.isNull());
    ASSERT_TRUE(QFile::remove(path));
    expectNothing(readClip(path));
}

TEST_F(BrokenClipTest, HugePictureIsNotDecoded)
{
    auto bytes = goodClip();
    auto* entry = bytes.data() + bytes.indexOf("avc1", bytes.indexOf("stsd"));
    qToBigEndian<quint16>(20000, entry + 28);
    qToBigEndian<quint16>(20000, entry + 30);
    const auto reading = readClip(clips.write(QStringLiteral("huge.mp4"), bytes));
    EXPECT_EQ(reading.facts.width, 20000);
    EXPECT_TRUE(reading.picture.isNull());
}

TEST_F(BrokenClipTest, HugePictureThatTheIndexHidesIsNotDecoded)
{
    auto bytes = test::GeneratedClips::read(
        clips.make(QStringLiteral("a.mov"),
                   QStringLiteral("-f lavfi -i testsrc=s=64x64:r=10:d=0.5 -c:v mjpeg -pix_fmt yuvj420p")));
    for (auto frame = bytes.indexOf("\xff\xc0"); frame >= 0; frame = bytes.indexOf("\xff\xc0", frame + 1)) {
        qToBigEndian<quint16>(60000, bytes.data() + frame + 5);
        qToBigEndian<quint16>(60000, bytes.data() + frame + 7);
    }
    const auto reading = readClip(clips.write(QStringLiteral("huge.mov"), bytes));
    EXPECT_EQ(reading.facts.width, 64);
    EXPECT_TRUE(reading.picture.isNull());
}

TEST_F(BrokenClipTest, IndexOfEndlessPicturesDoesNotHoldItUp)
{
    for (const quint32 distance : {0U, 1U}) {
        auto bytes = goodClip();
        const auto put = [&](const char* box, qsizetype at, quint32 value) {
            qToBigEndian(value, bytes.data() + bytes.indexOf(box) + at);
        };
        constexpr quint32 Count = 200'000;
        put("stsz", 8, 1);
        put("stsz", 12, Count);
        // One chunk holds them all, and they stand close together.
        put("stsc", 16, Count);
        put("stts", 12, Count);
        put("stts", 16, distance);
        const auto start = HostClock::now();
        EXPECT_TRUE(readClip(clips.write(QStringLiteral("endless.mp4"), bytes)).picture.isNull());
        EXPECT_LT(HostClock::now() - start, 5s);
    }
}

/// Broken claims of many samples: in a track of pictures, in one of sound, and in a fragment.
TEST_F(BrokenClipTest, ClaimsOfEndlessSamplesCostNoMemory)
{
    constexpr quint32 Count = 40'000'000;
    const auto claims = [](QByteArray bytes, qsizetype from) {
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
    // Nothing about the single sample, so that nothing can be missing.
    qToBigEndian<quint32>(0, run + 4);
    qToBigEndian(Count, run + 8);
    readClip(clips.write(QStringLiteral("good.mp4"), good));
    const auto peak = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss / 1024;
    };
    const auto before = peak();
    expectNothing(readClip(clips.write(QStringLiteral("picture.mp4"), claims(good, good.indexOf("vide")))));
    expectNothing(readClip(clips.write(QStringLiteral("sound.mp4"), claims(good, good.indexOf("soun")))));
    expectNothing(readClip(clips.write(QStringLiteral("fragment.mp4"), fragment)));
    // Mebibytes.
    EXPECT_LT(peak() - before, 50);
}

TEST_F(BrokenClipTest, SoundWithoutCompressionIsNoReasonToRefuse)
{
    // More frames of sound than samples would be believed.
    const auto path =
        clips.make(QStringLiteral("long.mov"),
                   QStringLiteral("-f lavfi -i testsrc=s=64x64:r=1:d=660 -f lavfi -i anullsrc=r=8000:cl=mono "
                                  "-t 660 -c:v libx264 -preset ultrafast -c:a pcm_u8"));
    const auto reading = readClip(path);
    EXPECT_NEAR(reading.facts.duration, 660, 1);
    EXPECT_FALSE(reading.picture.isNull());
}

TEST_F(BrokenClipTest, ReadingLeavesOthersTheirMemory)
{
    readClip(clips.write(QStringLiteral("good.mp4"), goodClip()));
    constexpr std::size_t Large = std::size_t{900} << 20U;
    void* const block = av_malloc(Large);
    EXPECT_NE(block, nullptr);
    av_free(block);
}

TEST_F(BrokenClipTest, StopAndTheEndOfTheTimeEndTheReading)
{
    const auto path = clips.write(QStringLiteral("a.mp4"), goodClip());
    std::stop_source stop;
    EXPECT_FALSE(readClip(path, stop.get_token()).picture.isNull());
    stop.request_stop();
    expectNothing(readClip(path, stop.get_token()));
    expectNothing(readClip(path, {}, 0s));
}

TEST_F(BrokenClipTest, DamageAnywhereIsSurvived)
{
    const auto bytes = goodClip(QStringLiteral("-movflags faststart"));
    const auto indexEnd = bytes.indexOf("mdat");
    std::minstd_rand random(5);
    for (int round = 0; round < 150; ++round) {
        auto damaged = bytes;
        // The first rounds hit the index, where it hurts most.
        const auto reach = static_cast<unsigned>(round < 100 ? indexEnd : bytes.size());
        for (int i = 0; i < 1 + round % 8; ++i) {
            damaged[static_cast<qsizetype>(random() % reach)] = static_cast<char>(random());
        }
        const auto reading = readClip(clips.write(QStringLiteral("damaged.mp4"), damaged));
        EXPECT_GE(reading.facts.duration, 0);
        EXPECT_LE(std::max(reading.picture.width(), reading.picture.height()), 640);
    }
}

} // namespace
} // namespace quelto
