// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/settings/CaptureArithmetic.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(Bitrate, GrowsWithPixelsFramesAndQuality)
{
    EXPECT_EQ(bitrateFor({1920, 1080}, 60, QualityPreset::high, VideoCodec::h264), 13'685'760);
    EXPECT_EQ(bitrateFor({1920, 1080}, 60, QualityPreset::high, VideoCodec::hevc), 9'580'032);
}

TEST(Bitrate, IsClampedToTwoToHundredMegabits)
{
    EXPECT_EQ(bitrateFor({640, 360}, 30, QualityPreset::low, VideoCodec::h264), 2'000'000);
    EXPECT_EQ(bitrateFor({3840, 2160}, 120, QualityPreset::ultra, VideoCodec::h264), 100'000'000);
    EXPECT_EQ(bitrateFor({32768, 32768}, 1'000'000, QualityPreset::ultra, VideoCodec::h264), 100'000'000);
}

struct Scaling {
    const char* name;
    QSize display;
    std::optional<int> target;
    VideoCodec codec;
    QSize scaled;
};

class ScaledSize : public testing::TestWithParam<Scaling> { };

TEST_P(ScaledSize, IsEvenAndNeverLarger)
{
    EXPECT_EQ(scaledSize(GetParam().display, GetParam().target, GetParam().codec), GetParam().scaled);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ScaledSize,
    testing::Values(Scaling{"Half", {5120, 2880}, 1440, VideoCodec::h264, {2560, 1440}},
                    Scaling{"NeverUp", {1280, 720}, 1080, VideoCodec::h264, {1280, 720}},
                    Scaling{"WideH264", {7680, 2160}, std::nullopt, VideoCodec::h264, {4096, 1152}},
                    Scaling{"WideHevc", {7680, 2160}, std::nullopt, VideoCodec::hevc, {7680, 2160}},
                    Scaling{"Truncates", {1366, 768}, 720, VideoCodec::h264, {1280, 720}},
                    Scaling{"Odd", {1281, 721}, std::nullopt, VideoCodec::h264, {1280, 720}},
                    Scaling{"SameHeight", {1920, 1080}, 1080, VideoCodec::h264, {1920, 1080}}),
    [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace quelto
