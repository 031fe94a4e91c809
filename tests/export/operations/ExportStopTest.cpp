// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/ExportFile.h"
#include "export/operations/VideoTools.h"
#include "tests/export/operations/ExportFixture.h"

#include <QFile>

#include <chrono>
#include <thread>

namespace quelto {
namespace {

using namespace test;

/// An encoder that calls a function after its last picture.
class WatchedEncoder final : public ExportEncoder {
public:
    WatchedEncoder(std::unique_ptr<ExportEncoder> encoder, std::function<void()> onFinished)
        : m_encoder(std::move(encoder))
        , m_onFinished(std::move(onFinished))
    {
    }
    void encode(const AVFrame& frame) override { m_encoder->encode(frame); }
    void finish() override
    {
        m_encoder->finish();
        m_onFinished();
    }
    const std::vector<std::byte>& parameterSets() const noexcept override { return m_encoder->parameterSets(); }
    EncoderKind kind() const noexcept override { return m_encoder->kind(); }

private:
    std::unique_ptr<ExportEncoder> m_encoder;
    std::function<void()> m_onFinished;
};

class ExportStopTest : public ExportTest {
protected:
    /// Replaces out.mp4 by the first seconds of the clip, and calls the function after the last picture.
    Attempt replaceOutput(const QString& clip, double seconds, std::vector<TranscodeAudio> audio,
                          const std::stop_token& stop, const std::function<void()>& onLastPicture)
    {
        std::vector<std::unique_ptr<SourceFile>> sources;
        sources.push_back(std::make_unique<SourceFile>(clip));
        constexpr QSize Size(320, 180);
        const TranscodeJob job{.clips = {{.path = clip, .start = {}, .end = fromSeconds(seconds)}},
                               .video = {.size = Size,
                                         .layout =
                                             [=](QSizeF) {
                                                 return FrameLayout{.canvas = Size, .image = QRectF({0, 0}, Size)};
                                             }},
                               .audio = std::move(audio)};
        return attempt(
            [&](const ExportControl& control) {
                return writeExport(job, sources,
                                   {.folder = sources.front()->folder(),
                                    .name = [](int) { return QStringLiteral("out.mp4"); },
                                    .existing = ExportTarget::Existing::replace},
                                   control, [&](const ExportEncoderRequest& request, ExportEncoder::OnPacket onPacket) {
                                       return std::make_unique<WatchedEncoder>(
                                           openExportEncoder(request, std::move(onPacket)), onLastPicture);
                                   });
            },
            stop);
    }
};

TEST_F(ExportStopTest, StopAfterTheLastPictureKeepsTheExistingFile)
{
    // Without sound, with sound as long as the pictures, and with sound that outlasts them by seconds.
    for (const auto& [sounds, seconds] : {std::pair{0, 0.5}, {1, 0.5}, {1, 8.0}}) {
        SCOPED_TRACE(testing::Message() << sounds << " tracks, " << seconds << " s");
        const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.5, .audio = {{.seconds = seconds}}});
        const auto existing = clips.write(QStringLiteral("out.mp4"), "existing");
        std::stop_source stop;
        const std::vector<TranscodeAudio> audio(static_cast<std::size_t>(sounds));
        const auto result = replaceOutput(clip, seconds, audio, stop.get_token(), [&] { stop.request_stop(); });
        EXPECT_TRUE(result.isStopped);
        EXPECT_EQ(GeneratedClips::read(existing), "existing");
        EXPECT_EQ(files(), (QStringList{QStringLiteral("X.mp4"), QStringLiteral("out.mp4")}));
    }
}

TEST_F(ExportStopTest, StopDuringTheLastPicturesPublishesNothing)
{
    struct Case {
        Export work;
        /// Waited in each report, because an aspect export leaves out those within 300 ms of the last one.
        std::chrono::milliseconds pause{};
    };
    const auto clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.1, .audio = {{.seconds = 1}}});
    const std::vector<Case> exports{
        {[&](const ExportControl& control) { return Exporter::trim(clip, {.start = 0, .end = 0.1}, control); }},
        // Nothing is below this limit.
        {[&](const ExportControl& control) { return Exporter::compressForDiscord(clip, -1, control); }},
        {[&](const ExportControl& control) {
             return VideoTools::exportAspect(clip, AspectRatio::square, FillMode::blur, control);
         },
         std::chrono::milliseconds(310)}};
    for (std::size_t i = 0; i < exports.size(); ++i) {
        SCOPED_TRACE(i);
        const auto& [work, pause] = exports[i];
        const auto complete = attempt(work, {}, [&](double) { std::this_thread::sleep_for(pause); });
        ASSERT_TRUE(complete.hasSucceeded());
        QFile::remove(complete.path);
        // The last report before the file has its name, and the one before that.
        const auto end = std::ranges::find(complete.progress, 1.0) - complete.progress.begin();
        ASSERT_GT(end, 1);
        for (auto at = end - 2; at < end; ++at) {
            std::stop_source stop;
            std::ptrdiff_t reports = 0;
            const auto result = attempt(work, stop.get_token(), [&](double) {
                std::this_thread::sleep_for(pause);
                if (reports++ == at) {
                    stop.request_stop();
                }
            });
            EXPECT_TRUE(result.isStopped);
            EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
        }
    }
}

/// A shrink of a clip that stays above its limit, with something that happens at the start of the second pass.
class SecondPassTest : public ExportStopTest {
protected:
    Attempt shrink(const std::stop_token& stop, const std::function<void()>& onSecondPass)
    {
        int pass = 1;
        bool hasEnded = false;
        return attempt([&](const ExportControl& control) { return Exporter::compressForDiscord(clip, 0, control); },
                       stop,
                       [&](double done) {
                           if (hasEnded && done < 1 && ++pass == 2) {
                               EXPECT_TRUE(QFile::exists(firstCopy));
                               onSecondPass();
                           }
                           hasEnded = done == 1;
                       });
    }

    QString clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 0.3});
    QString firstCopy = clips.path(QStringLiteral("X (Discord).mp4"));
};

TEST_F(SecondPassTest, StopDeletesTheCopyOfTheFirst)
{
    std::stop_source stop;
    EXPECT_TRUE(shrink(stop.get_token(), [&] { stop.request_stop(); }).isStopped);
    EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
}

TEST_F(SecondPassTest, ErrorLeavesTheCopyOfTheFirst)
{
    const auto result = shrink({}, [&] { padded(clip, 0); });
    EXPECT_EQ(result.message.toStdString(), "Dışa aktarma başarısız: Klip dışa aktarılırken değişti. Yeniden deneyin.");
    EXPECT_EQ(files(), (QStringList{QStringLiteral("X (Discord).mp4"), QStringLiteral("X.mp4")}));
    expectValidExport(firstCopy);
}

TEST_F(SecondPassTest, RenamedClipIsReadToTheEnd)
{
    const auto renamed = clips.path(QStringLiteral("Y.mp4"));
    const auto result = shrink({}, [&] { QFile::rename(clip, renamed); });
    EXPECT_EQ(result.message.toStdString(), "");
    EXPECT_EQ(files(), (QStringList{QStringLiteral("X (Discord).mp4"), QStringLiteral("Y.mp4")}));
    expectValidExport(firstCopy);
}

} // namespace
} // namespace quelto
