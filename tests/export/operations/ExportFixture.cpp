// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/export/operations/ExportFixture.h"

#include "base/language/L10n.h"
#include "export/errors/ExportError.h"
#include "tests/media/probe/Mp4Boxes.h"
#include "tests/media/probe/Probe.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <gmock/gmock.h>

namespace quelto::test {

Attempt attempt(const Export& work, std::stop_token stop, const std::function<void(double)>& onProgress)
{
    Attempt result;
    try {
        result.path = work({.stop = std::move(stop), .progress = [&](double done) {
                                result.progress.push_back(done);
                                onProgress(done);
                            }});
    } catch (const ExportError& error) {
        result.message = error.message();
    } catch (const ExportStopped&) {
        result.isStopped = true;
    }
    return result;
}

void expectCompleteProgress(const std::vector<double>& progress)
{
    ASSERT_FALSE(progress.empty());
    EXPECT_TRUE(std::ranges::is_sorted(progress));
    EXPECT_GE(progress.front(), 0);
    EXPECT_EQ(progress.back(), 1);
    EXPECT_EQ(std::ranges::count(progress, 1), 1);
}

FileState stateOf(const QString& path)
{
    return {.bytes = GeneratedClips::read(path), .modified = QFileInfo(path).lastModified()};
}

QString padded(const QString& path, qint64 size)
{
    auto bytes = GeneratedClips::read(path);
    QByteArray box(std::max<qint64>(size - bytes.size(), 8), '\0');
    qToBigEndian(static_cast<quint32>(box.size()), box.data());
    box.replace(4, 4, "free");
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::Append));
    EXPECT_EQ(file.write(box), box.size());
    return path;
}

CounterClip fragmentsWithBFrames(const std::vector<BeepTrack>& audio)
{
    return {.seconds = 0.6,
            .encoding = QStringLiteral("-c:v libx264 -preset veryfast -bf 3 -b_strategy 0 -g 20"),
            .audio = audio,
            .muxing = QStringLiteral("-movflags frag_keyframe+empty_moov")};
}

CounterClip widePixelsInPictureData()
{
    return {.size = QSize(240, 180),
            .seconds = 0.2,
            .filter = QStringLiteral("setsar=0"),
            .encoding =
                QStringLiteral("-c:v libx264 -preset ultrafast -qp 18 -bsf:v h264_metadata=sample_aspect_ratio=4/3")};
}

void expectSquarePixels(const QString& output, const QString& clip)
{
    EXPECT_EQ(pictureSize(output), QSize(320, 180));
    const auto frames = readCounter(output);
    EXPECT_EQ(numbersOf(frames), numbersOf(readCounter(clip)));
    // The outermost bars.
    EXPECT_GT(frames.front().white, 150);
    EXPECT_LT(frames.front().black, 60);
}

QSize pictureSize(const QString& path)
{
    const auto video = streamsOf(path).at(0).toObject();
    return {video[u"width"].toInt(), video[u"height"].toInt()};
}

QStringList filesIn(const QString& folder)
{
    auto names = QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    names.removeAll(QStringLiteral("ffmpeg.log"));
    return names;
}

ExportTest::ExportTest()
{
    L10n::use(QStringLiteral("tr"));
}

ExportTest::~ExportTest()
{
    L10n::use(QStringLiteral("tr"));
}

void expectValidExport(const QString& path)
{
    const auto boxes = readMp4Boxes(path);
    const auto place = [&](const QString& type) { return std::ranges::find(boxes.order, type) - boxes.order.begin(); };
    EXPECT_LT(place(QStringLiteral("moov")), place(QStringLiteral("mdat")));
    EXPECT_LT(place(QStringLiteral("mdat")), static_cast<std::ptrdiff_t>(boxes.order.size()));
    EXPECT_EQ(boxes.order.front(), QStringLiteral("ftyp"));
    EXPECT_EQ(decodingErrors(path).toStdString(), "");
    for (const auto& stream : streamsOf(path)) {
        const auto codec = stream[u"codec_name"].toString();
        if (stream[u"codec_type"] == QStringLiteral("video")) {
            EXPECT_EQ(codec, QStringLiteral("h264"));
            EXPECT_EQ(stream[u"profile"].toString(), QStringLiteral("High"));
            EXPECT_EQ(stream[u"pix_fmt"].toString(), QStringLiteral("yuv420p"));
        } else {
            EXPECT_EQ(codec, QStringLiteral("aac"));
            EXPECT_EQ(stream[u"sample_rate"].toString(), QStringLiteral("48000"));
            EXPECT_EQ(stream[u"channels"].toInt(), 2);
        }
    }
}

std::vector<CountedFrame> framesIn(const std::vector<CountedFrame>& frames, double start, double end)
{
    // Less than the rounding of times in files.
    constexpr double Rounding = 1e-4;
    std::vector<CountedFrame> shown;
    for (auto frame : frames) {
        if (frame.time >= end - Rounding) {
            break;
        }
        if (frame.time <= start + Rounding) {
            shown.clear();
        }
        frame.time = std::max(frame.time - start, 0.0);
        shown.push_back(frame);
    }
    return shown;
}

void expectFrames(const std::vector<CountedFrame>& actual, const std::vector<CountedFrame>& expected)
{
    ASSERT_EQ(numbersOf(actual), numbersOf(expected));
    EXPECT_THAT(timesOf(actual), testing::Pointwise(testing::DoubleNear(0.0005), timesOf(expected)));
}

std::vector<double> trackDurations(const QString& path)
{
    const auto boxes = readMp4Boxes(path);
    std::vector<double> durations;
    for (const auto& track : boxes.tracks) {
        durations.push_back(static_cast<double>(track.duration) / boxes.movieTimeScale);
    }
    return durations;
}

std::vector<double> beepsIn(const std::vector<double>& beeps, double start, double end)
{
    constexpr double BeepLength = 0.02;
    std::vector<double> heard;
    for (const auto beep : beeps) {
        if (beep >= start && beep + BeepLength <= end) {
            heard.push_back(beep - start);
        }
    }
    return heard;
}

void expectBeeps(const std::vector<double>& actual, const std::vector<double>& expected)
{
    EXPECT_THAT(actual, testing::Pointwise(testing::DoubleNear(0.001), expected));
}

} // namespace quelto::test
