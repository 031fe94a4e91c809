// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/settings/CaptureSettings.h"

#include "tests/capture/FakePlatform.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto {
namespace {

class CaptureSettingsTest : public testing::Test {
protected:
    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
};

TEST_F(CaptureSettingsTest, BufferHoldsAtLeastNinetySecondsWhileMomentsAreDetected)
{
    EXPECT_EQ(bufferSeconds(settings), 90);
    settings.setClipLength(300);
    EXPECT_EQ(bufferSeconds(settings), 300);
    settings.setClipLength(30);
    settings.setAutoClipEnabled(false);
    EXPECT_EQ(bufferSeconds(settings), 30);
}

TEST_F(CaptureSettingsTest, ClipLengthVolumeAndFolderNeedNoNewSession)
{
    const auto before = CaptureSettings::of(settings);
    settings.setClipLength(120);
    settings.setSystemVolume(0.5);
    settings.setMicVolume(0.5);
    settings.setSaveFolder(QStringLiteral("/elsewhere"));
    EXPECT_EQ(CaptureSettings::of(settings), before);
    EXPECT_EQ(CaptureSettings::of(settings).captureSignature(), before.captureSignature());
}

TEST_F(CaptureSettingsTest, SignatureHasEachFieldAtItsPlace)
{
    const std::array<std::pair<const char*, const char*>, 11> lines{
        {{"", "0|p1080|high|60|h264|true|true|true||true"},
         {"displayID=7", "7|p1080|high|60|h264|true|true|true||true"},
         {"resolution=p720", "0|p720|high|60|h264|true|true|true||true"},
         {"quality=low", "0|p1080|low|60|h264|true|true|true||true"},
         {"fps=30", "0|p1080|high|30|h264|true|true|true||true"},
         {"codec=hevc", "0|p1080|high|60|hevc|true|true|true||true"},
         {"captureAudio=false", "0|p1080|high|60|h264|false|true|true||true"},
         {"showCursor=false", "0|p1080|high|60|h264|true|false|true||true"},
         {"captureMicrophone=false", "0|p1080|high|60|h264|true|true|false||true"},
         {"microphoneID=usb", "0|p1080|high|60|h264|true|true|true|usb|true"},
         {"captureVoiceChat=false", "0|p1080|high|60|h264|true|true|true||false"}}};
    const auto defaults = CaptureSettings::of(settings);
    for (const auto& [line, signature] : lines) {
        const auto path = folder.filePath(QStringLiteral("%1.conf").arg(QLatin1String(line)));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("[General]\n") + line + '\n');
        file.close();
        const auto read = CaptureSettings::of(AppSettings(path));
        EXPECT_EQ(read.captureSignature(), QLatin1String(signature)) << line;
        EXPECT_EQ(read == defaults, *line == '\0') << line;
    }
}

TEST_F(CaptureSettingsTest, EstimatesTheSizeFromTheChosenDisplay)
{
    test::FakeDisplays displays;
    displays.displays = {{.id = 1, .name = QStringLiteral("main"), .pixelSize = {2560, 1440}, .isMain = true},
                         {.id = 2, .name = QStringLiteral("small"), .pixelSize = {1366, 768}, .isMain = false}};
    const auto estimate = [&] { return estimatedCaptureSize(CaptureSettings::of(settings), displays); };
    EXPECT_EQ(estimate(), QSize(1920, 1080));
    settings.setResolution(ResolutionPreset::native);
    EXPECT_EQ(estimate(), QSize(2560, 1440));
    settings.setDisplayID(2);
    EXPECT_EQ(estimate(), QSize(1366, 768));
}

TEST_F(CaptureSettingsTest, EstimatesTheSizeOfTheDisplayThatTheDesktopChose)
{
    test::FakeDisplays displays;
    displays.areChosen = true;
    displays.displays.first().pixelSize = {1366, 768};
    settings.setResolution(ResolutionPreset::native);
    // From an X11 session.
    settings.setDisplayID(42);
    EXPECT_EQ(estimatedCaptureSize(CaptureSettings::of(settings), displays), QSize(1366, 768));
}

TEST_F(CaptureSettingsTest, EstimatesFullHdForAnUnknownDisplay)
{
    test::FakeDisplays displays;
    const auto estimate = [&] { return estimatedCaptureSize(CaptureSettings::of(settings), displays); };
    settings.setDisplayID(9);
    EXPECT_EQ(estimate(), QSize(1920, 1080));
    settings.setDisplayID(0);
    displays.displays.first().pixelSize = {0, 1440};
    EXPECT_EQ(estimate(), QSize(1920, 1080));
    displays.displays.clear();
    EXPECT_EQ(estimate(), QSize(1920, 1080));
}

} // namespace
} // namespace quelto
