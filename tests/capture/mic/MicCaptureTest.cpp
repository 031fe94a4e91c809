// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mic/MicCapture.h"

#include "tests/capture/FakePlatform.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using std::chrono::milliseconds;

class MicCaptureTest : public testing::Test {
protected:
    test::FakeAudioServer server;
    HostTime now{std::chrono::hours(1)};
    MicCapture mic{server, [this] { return now; }};
    std::vector<float> levels;

    void SetUp() override
    {
        mic.onLevel = [this](float level) { levels.push_back(level); };
    }
};

TEST_F(MicCaptureTest, PassesOnEveryBuffer)
{
    int count = 0;
    mic.onBuffer = [&](const AudioBufferPtr&) { ++count; };
    mic.start({});
    for (int i = 0; i < 5; ++i) {
        server.mic->emitTone(0.5F);
    }
    EXPECT_EQ(count, 5);
}

TEST_F(MicCaptureTest, ReportsALevelAtMostEveryEightyMilliseconds)
{
    mic.start({});
    server.mic->emitTone(0.5F);
    now += milliseconds(80);
    server.mic->emitTone(0.6F);
    EXPECT_EQ(levels, (std::vector{0.5F}));
    now += milliseconds(1);
    server.mic->emitTone(0.7F);
    EXPECT_EQ(levels, (std::vector{0.5F, 0.7F}));
}

TEST_F(MicCaptureTest, ReportsNoLevelForANullBuffer)
{
    mic.start({});
    server.mic->events.onBuffer(nullptr);
    EXPECT_TRUE(levels.empty());
}

TEST_F(MicCaptureTest, OpensTheDeviceWithThatId)
{
    mic.start(QStringLiteral("usb-microphone"));
    EXPECT_EQ(server.askedFor, QStringLiteral("usb-microphone"));
}

TEST_F(MicCaptureTest, StopsTheDeviceBeforeItStartsAnother)
{
    mic.start({});
    mic.start(QStringLiteral("other"));
    EXPECT_EQ(server.runningSources, 1);
    mic.stop();
    EXPECT_EQ(server.runningSources, 0);
}

TEST_F(MicCaptureTest, PassesOnAMissingDevice)
{
    server.micProblem = QStringLiteral("Mikrofon bulunamadı.");
    std::optional<QString> warning;
    mic.onWarning = [&](const std::optional<QString>& reported) { warning = reported; };
    mic.start({});
    EXPECT_EQ(warning, server.micProblem);
}

} // namespace
} // namespace quelto
