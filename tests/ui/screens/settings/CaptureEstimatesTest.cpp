// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/CaptureEstimates.h"

#include "tests/capture/recorder/RecorderFixture.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto {
namespace {

class CaptureEstimatesTest : public testing::Test {
protected:
    std::string texts() const
    {
        return QStringList{estimates.output(), estimates.bitrate(), estimates.clipSize(), estimates.memory()}
            .join(QStringLiteral(", "))
            .toStdString();
    }

    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    test::FakeDisplays displays;
    CaptureEstimates estimates{settings, displays, nullptr};
};

TEST_F(CaptureEstimatesTest, AreThoseOfTheDefaults)
{
    EXPECT_EQ(texts(), "1920×1080, 14 Mbps, ~51 MB, ~86 MB");
}

TEST_F(CaptureEstimatesTest, FollowTheSettings)
{
    QSignalSpy changes(&estimates, &CaptureEstimates::changed);
    settings.setCodec(VideoCodec::hevc);
    EXPECT_EQ(texts(), "1920×1080, 10 Mbps, ~36 MB, ~70 MB");
    settings.setClipLength(300);
    EXPECT_EQ(texts(), "1920×1080, 10 Mbps, ~359 MB, ~425 MB");
    settings.setResolution(ResolutionPreset::p720);
    settings.setFps(30);
    settings.setQuality(QualityPreset::low);
    settings.setCodec(VideoCodec::h264);
    // The least bit rate.
    EXPECT_EQ(texts(), "1280×720, 2 Mbps, ~75 MB, ~112 MB");
    const auto count = changes.size();
    settings.setMicVolume(0.5);
    settings.setFps(30);
    EXPECT_EQ(changes.size(), count);
}

TEST_F(CaptureEstimatesTest, UseTheClipLengthAlsoWhileTheBufferIsLonger)
{
    settings.setAutoClipEnabled(true);
    settings.setClipLength(15);
    EXPECT_EQ(texts(), "1920×1080, 14 Mbps, ~26 MB, ~58 MB");
}

TEST_F(CaptureEstimatesTest, FollowTheDisplays)
{
    displays.displays.append({.id = 9, .name = QStringLiteral("two"), .pixelSize = {1280, 720}});
    settings.setDisplayID(9);
    EXPECT_EQ(estimates.output(), QStringLiteral("1280×720"));
    displays.displays.removeLast();
    Q_EMIT qGuiApp->screenRemoved(nullptr);
    EXPECT_EQ(estimates.output(), QStringLiteral("1920×1080"));
}

class RecordedDisplayTest : public test::RecorderFixture { };

TEST_F(RecordedDisplayTest, ItsSizeIsKnownWhenTheRecordingStarts)
{
    const CaptureEstimates estimates(settings, *fakes.displays, recorder.get());
    const auto before = estimates.output();
    fakes.displays->displays.first().pixelSize = {1280, 720};
    EXPECT_EQ(estimates.output(), before);
    record();
    EXPECT_EQ(estimates.output(), QStringLiteral("1280×720"));
}

} // namespace
} // namespace quelto
