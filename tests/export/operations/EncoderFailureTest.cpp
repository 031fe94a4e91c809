// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/ExportFile.h"
#include "tests/export/operations/ExportFixture.h"

#include <QFile>

namespace quelto {
namespace {

using namespace test;

/// An encoder that fails after a number of frames.
class FailingEncoder final : public ExportEncoder {
public:
    FailingEncoder(std::unique_ptr<ExportEncoder> encoder, EncoderKind kind, int frames)
        : m_encoder(std::move(encoder))
        , m_kind(kind)
        , m_frames(frames)
    {
    }
    void encode(const AVFrame& frame) override
    {
        if (m_frames-- == 0) {
            throw EncoderError(-1);
        }
        m_encoder->encode(frame);
    }
    void finish() override { m_encoder->finish(); }
    const std::vector<std::byte>& parameterSets() const noexcept override { return m_encoder->parameterSets(); }
    EncoderKind kind() const noexcept override { return m_kind; }

private:
    std::unique_ptr<ExportEncoder> m_encoder;
    EncoderKind m_kind;
    int m_frames;
};

/// Opens an encoder that says to be hardware and fails after a number of frames. In software, it works.
OpenExportEncoder failingHardware(int frames)
{
    return [frames](ExportEncoderRequest request, ExportEncoder::OnPacket onPacket) -> std::unique_ptr<ExportEncoder> {
        const bool isHardwareAllowed = request.choice == EncoderChoice::any;
        request.choice = EncoderChoice::software;
        auto encoder = openExportEncoder(request, std::move(onPacket));
        if (!isHardwareAllowed) {
            return encoder;
        }
        return std::make_unique<FailingEncoder>(std::move(encoder), EncoderKind::hardware, frames);
    };
}

OpenExportEncoder failingSoftware(int frames)
{
    return [frames](ExportEncoderRequest request, ExportEncoder::OnPacket onPacket) {
        request.choice = EncoderChoice::software;
        return std::make_unique<FailingEncoder>(openExportEncoder(request, std::move(onPacket)), EncoderKind::software,
                                                frames);
    };
}

class EncoderFailureTest : public ExportTest {
protected:
    Attempt exportWith(const OpenExportEncoder& openEncoder, std::optional<int> bitsPerSecond = {})
    {
        return exportWith(clip, openEncoder, bitsPerSecond);
    }

    static Attempt exportWith(const QString& path, const OpenExportEncoder& openEncoder,
                              std::optional<int> bitsPerSecond)
    {
        std::vector<std::unique_ptr<SourceFile>> sources;
        sources.push_back(std::make_unique<SourceFile>(path));
        constexpr QSize Size(320, 180);
        const TranscodeJob job{.clips = {{.path = path, .start = {}, .end = fromSeconds(1)}},
                               .video = {.size = Size,
                                         .layout =
                                             [=](QSizeF) {
                                                 return FrameLayout{.canvas = Size, .image = QRectF({0, 0}, Size)};
                                             },
                                         .bitsPerSecond = bitsPerSecond},
                               .audio = {{}}};
        return attempt([&](const ExportControl& control) {
            return writeExport(job, sources,
                               {.folder = sources.front()->folder(),
                                .name = [](int) { return QStringLiteral("out.mp4"); },
                                .existing = ExportTarget::Existing::replace},
                               control, openEncoder);
        });
    }

    QString clip = makeClip(clips, QStringLiteral("X.mp4"), {.seconds = 1});
};

TEST_F(EncoderFailureTest, SoftwareReplacesHardwareThatFails)
{
    for (const int frames : {0, 1, 7, 59}) {
        for (const auto bitsPerSecond : {std::optional<int>(), std::optional(500'000)}) {
            SCOPED_TRACE(testing::Message() << frames << " frames at " << bitsPerSecond.value_or(0));
            const auto result = exportWith(failingHardware(frames), bitsPerSecond);
            ASSERT_EQ(result.message.toStdString(), "");
            expectCompleteProgress(result.progress);
            expectValidExport(result.path);
            expectFrames(readCounter(result.path), readCounter(clip));
            expectBeeps(beepTimes(result.path, 0), beepTimes(clip, 0));
            EXPECT_EQ(files(), (QStringList{QStringLiteral("X.mp4"), QStringLiteral("out.mp4")}));
        }
    }
}

TEST_F(EncoderFailureTest, SoftwareThatFailsIsReported)
{
    for (const auto bitsPerSecond : {std::optional<int>(), std::optional(500'000)}) {
        const auto result = exportWith(failingSoftware(20), bitsPerSecond);
        EXPECT_EQ(result.message.toStdString(), "Dışa aktarma başarısız: yazma hatası");
        EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
    }
}

/// A damaged file may be decoded differently each time.
TEST_F(EncoderFailureTest, SecondPassGetsNoMoreFramesThanTheFirst)
{
    const auto shorter = makeClip(clips, QStringLiteral("shorter.mp4"), {.rate = QStringLiteral("10"), .seconds = 1});
    const auto link = clips.path(QStringLiteral("link.mp4"));
    ASSERT_TRUE(QFile::link(shorter, link));
    const auto result = exportWith(
        link,
        [&](const ExportEncoderRequest& request, ExportEncoder::OnPacket onPacket) {
            if (request.pass == EncoderPass::second) {
                QFile::remove(link);
                QFile::link(clip, link);
            }
            return openExportEncoder(request, std::move(onPacket));
        },
        500'000);
    EXPECT_EQ(result.message.toStdString(), "");
    EXPECT_EQ(readCounter(result.path).size(), 10U);
    expectValidExport(result.path);
}

TEST_F(EncoderFailureTest, NoEncoderIsReported)
{
    const auto result =
        exportWith([](const ExportEncoderRequest&, const ExportEncoder::OnPacket&) -> std::unique_ptr<ExportEncoder> {
            throw EncoderError(-1);
        });
    EXPECT_EQ(result.message.toStdString(), "Dışa aktarma başarısız: yazma hatası");
    EXPECT_EQ(files(), QStringList{QStringLiteral("X.mp4")});
}

} // namespace
} // namespace quelto
