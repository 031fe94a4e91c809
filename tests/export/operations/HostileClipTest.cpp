// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/time/HostClock.h"
#include "export/operations/VideoTools.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/MediaDuration.h"
#include "tests/media/probe/Mp4Boxes.h"
#include "tests/media/probe/Probe.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <condition_variable>
#include <mutex>
#include <random>
#include <thread>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using namespace test;

/// An export and the ways to make the clip that it gets.
struct HostileCase {
    const char* name;
    QString (*run)(const QString& clip, const ExportControl& control);
};

void PrintTo(const HostileCase& row, std::ostream* out)
{
    *out << row.name;
}

const std::vector<HostileCase> HostileCases{
    {"Trim",
     [](const QString& clip, const ExportControl& control) {
         return Exporter::trim(clip, {.start = 0.05, .end = 0.2}, control);
     }},
    // Nothing is below this limit.
    {"Shrink",
     [](const QString& clip, const ExportControl& control) { return Exporter::compressForDiscord(clip, -1, control); }},
    {"Vertical",
     [](const QString& clip, const ExportControl& control) {
         return VideoTools::exportAspect(clip, AspectRatio::vertical, FillMode::blur, control);
     }},
};

/// The damaged clips. QUELTO_HOSTILE_FIRST and QUELTO_HOSTILE_CLIPS choose others for a long run or to repeat one.
struct DamagedClips {
    int first = qEnvironmentVariableIntValue("QUELTO_HOSTILE_FIRST");
    int count =
        qEnvironmentVariableIsSet("QUELTO_HOSTILE_CLIPS") ? qEnvironmentVariableIntValue("QUELTO_HOSTILE_CLIPS") : 66;
};

class HostileClipTest : public ExportTest, public testing::WithParamInterface<HostileCase> {
protected:
    /// Small clips that are stored in different ways.
    std::vector<QByteArray> goodClips() const
    {
        struct Storage {
            const char* video;
            const char* audio;
            const char* muxing;
        };
        constexpr std::array Storages{
            Storage{"-c:v libx264 -preset veryfast -bf 2", "-c:a aac -b:a 128k", "-movflags faststart"},
            Storage{"-c:v libx265 -preset ultrafast -x265-params log-level=none -tag:v hvc1", "-c:a libopus",
                    "-movflags frag_keyframe+empty_moov"},
            Storage{"-c:v mjpeg -pix_fmt yuvj420p", "-c:a pcm_s16le", "-f mov -movflags faststart"},
            Storage{"-c:v libvpx-vp9 -deadline realtime -cpu-used 8", "-c:a aac -b:a 128k", "-movflags faststart"},
        };
        std::vector<QByteArray> bytes;
        for (const auto& storage : Storages) {
            const CounterClip clip{.size = QSize(64, 36),
                                   .rate = QStringLiteral("30"),
                                   .seconds = 0.3,
                                   .encoding = QString::fromLatin1(storage.video),
                                   .audioEncoding = QString::fromLatin1(storage.audio),
                                   .muxing = QString::fromLatin1(storage.muxing)};
            bytes.push_back(GeneratedClips::read(makeClip(clips, QStringLiteral("good.mp4"), clip)));
        }
        QFile::remove(clips.path(QStringLiteral("good.mp4")));
        return bytes;
    }

    /// Requires a valid file, or an error and no file, in a few seconds.
    void exportDamaged(const QByteArray& bytes)
    {
        constexpr auto Limit = 5s;
        const auto clip = clips.write(QStringLiteral("X.mp4"), bytes);
        const auto start = HostClock::now();
        std::stop_source stop;
        const auto result = [&] {
            std::mutex mutex;
            std::condition_variable_any ended;
            const std::jthread timer([&](const std::stop_token& end) {
                std::unique_lock lock(mutex);
                ended.wait_for(lock, end, Limit, [] { return false; });
                if (!end.stop_requested()) {
                    stop.request_stop();
                }
            });
            return attempt([&](const ExportControl& control) { return GetParam().run(clip, control); },
                           stop.get_token());
        }();
        EXPECT_LT(HostClock::now() - start, 3 * Limit);
        EXPECT_EQ(GeneratedClips::read(clip), bytes);
        if (result.hasSucceeded()) {
            ++m_successes;
            const auto boxes = readMp4Boxes(result.path);
            EXPECT_EQ(boxes.order.front(), QStringLiteral("ftyp"));
            EXPECT_GT(mediaDuration(result.path).value_or(0), 0);
            EXPECT_EQ(files().size(), 2);
            // Each tenth, because it takes time.
            if (m_successes % 10 == 1) {
                EXPECT_EQ(decodingErrors(result.path).toStdString(), "");
            }
            QFile::remove(result.path);
        } else {
            // A damaged index can make a track hours long, or take a second each time it is read.
            EXPECT_TRUE(!result.message.isEmpty() || (result.isStopped && stop.stop_requested()));
            // The first pass of a shrink stays if the second one fails.
            for (const auto& name : files()) {
                EXPECT_TRUE(name == u"X.mp4" || name.startsWith(QStringLiteral("X (Discord"))) << name.toStdString();
                QFile::remove(clips.path(name));
            }
        }
    }

    int m_successes = 0;
};

INSTANTIATE_TEST_SUITE_P(All, HostileClipTest, testing::ValuesIn(HostileCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(HostileClipTest, TruncatedClipsAreExportedOrReported)
{
    const auto good = goodClips();
    for (int i = 0; i < 64; ++i) {
        SCOPED_TRACE(i);
        const auto& bytes = good[static_cast<std::size_t>(i) % good.size()];
        exportDamaged(bytes.first(bytes.size() * i / 64));
    }
}

TEST_P(HostileClipTest, DamagedClipsAreExportedOrReported)
{
    const auto good = goodClips();
    const DamagedClips damaged;
    for (int i = damaged.first; i < damaged.first + damaged.count; ++i) {
        SCOPED_TRACE(i);
        std::minstd_rand random(static_cast<unsigned>(i) + 1);
        auto bytes = good[static_cast<std::size_t>(i) % good.size()];
        // Most damage the index, which is in front.
        const auto index = std::max<qsizetype>(bytes.indexOf("mdat"), 100);
        const auto range = static_cast<unsigned>(i % 3 < 2 ? index : bytes.size());
        for (int flip = 0; flip <= i % 8; ++flip) {
            const auto at = static_cast<qsizetype>(random() % range);
            bytes[at] = static_cast<char>(bytes[at] ^ (1 << random() % 8));
        }
        exportDamaged(bytes);
    }
    EXPECT_TRUE(m_successes > 0 || damaged.count < 66);
}

/// The index is intact, but no picture can be decoded.
TEST_P(HostileClipTest, ClipWithoutAnyPictureIsReported)
{
    auto bytes = GeneratedClips::read(makeClip(
        clips, QStringLiteral("X.mp4"),
        {.size = QSize(64, 36), .seconds = 0.3, .audio = {}, .muxing = QStringLiteral("-movflags faststart")}));
    const auto pictures = bytes.indexOf("mdat") + 4;
    ASSERT_GT(pictures, 100);
    std::fill(bytes.begin() + pictures, bytes.end(), '\xff');
    const auto clip = clips.write(QStringLiteral("X.mp4"), bytes);
    const auto result = attempt([&](const ExportControl& control) { return GetParam().run(clip, control); });
    EXPECT_EQ(result.message.toStdString(), "Dışa aktarma başarısız: okuma hatası");
    EXPECT_FALSE(result.hasSucceeded());
    EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
}

} // namespace
} // namespace quelto
