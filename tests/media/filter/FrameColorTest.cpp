// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FrameComposer.h"

#include "tests/media/filter/TestFrames.h"
#include "tests/media/filter/TestLayouts.h"

#include <gmock/gmock.h>

namespace quelto {
namespace {

using testing::ElementsAre;
using testing::Pointwise;

MATCHER_P(NearTo, tolerance, "")
{
    return std::abs(std::get<0>(arg) - std::get<1>(arg)) <= tolerance;
}

constexpr QSize Size(64, 64);

struct Weights {
    double red = 0.2126;
    double blue = 0.0722;
};
constexpr Weights Bt709{};
constexpr Weights Bt601{0.299, 0.114};
constexpr Weights Bt2020{0.2627, 0.0593};

using Rgb = std::array<double, 3>;

std::array<int, 3> limitedYuv(const Rgb& color, const Weights& weights, int depth)
{
    const auto [red, green, blue] = color;
    const double luma = weights.red * red + weights.blue * blue + (1 - weights.red - weights.blue) * green;
    const auto chroma = [luma](double value, double weight) { return (value - luma) / (2 * (1 - weight)); };
    const int unit = 1 << (depth - 8);
    const auto stored = [unit](double value, int range, int zero) {
        return int(std::lround((value * range + zero) * unit));
    };
    return {stored(luma, 219, 16), stored(chroma(blue, weights.blue), 224, 128),
            stored(chroma(red, weights.red), 224, 128)};
}

std::array<int, 3> fullYuv(const Rgb& color, const Weights& weights)
{
    const auto [luma, blue, red] = limitedYuv(color, weights, 16);
    const auto widened = [](int value, double range, double zero) { return (value / 256.0 - zero) / range; };
    return {int(std::lround(widened(luma, 219, 16) * 255)), int(std::lround(widened(blue, 224, 128) * 255 + 128)),
            int(std::lround(widened(red, 224, 128) * 255 + 128))};
}

std::array<int, 3> bytes(const Rgb& color)
{
    return {int(std::lround(color[0] * 255)), int(std::lround(color[1] * 255)), int(std::lround(color[2] * 255))};
}

/// The mean of a component over the middle of the picture: dithering spreads a value over pixels.
std::array<double, 3> meanColor(const AVFrame& frame)
{
    std::array<double, 3> sum{};
    for (int y = 16; y < 48; ++y) {
        for (int x = 16; x < 48; ++x) {
            for (int i = 0; i < 3; ++i) {
                sum[std::size_t(i)] += test::valueAt(frame, i, {x, y}) / 1024.0;
            }
        }
    }
    return sum;
}

std::array<double, 3> composedColor(const AVFrame& frame, PictureScaler scaler = PictureScaler::Zimg)
{
    FrameComposer composer(test::cropOn(Size), scaler);
    const auto result = composer.compose(frame, {1, 1}, {});
    EXPECT_EQ(result->format, AV_PIX_FMT_YUV420P);
    EXPECT_EQ(result->colorspace, AVCOL_SPC_BT709);
    EXPECT_EQ(result->color_range, AVCOL_RANGE_MPEG);
    EXPECT_EQ(result->color_primaries, AVCOL_PRI_BT709);
    EXPECT_EQ(result->color_trc, AVCOL_TRC_BT709);
    return meanColor(*result);
}

struct ColorCase {
    const char* name;
    AVPixelFormat format;
    AVColorSpace matrix;
    AVColorRange range;
    std::array<int, 3> (*stored)(const Rgb&);
};

void PrintTo(const ColorCase& row, std::ostream* out)
{
    *out << row.name;
}

const ColorCase Cases[] = {
    {"Bt709", AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, [](auto& c) { return limitedYuv(c, Bt709, 8); }},
    {"UntaggedSmall", AV_PIX_FMT_YUV420P, AVCOL_SPC_UNSPECIFIED, AVCOL_RANGE_UNSPECIFIED,
     [](auto& c) { return limitedYuv(c, Bt601, 8); }},
    {"Bt601", AV_PIX_FMT_YUV420P, AVCOL_SPC_SMPTE170M, AVCOL_RANGE_MPEG,
     [](auto& c) { return limitedYuv(c, Bt601, 8); }},
    {"Bt601FullRange", AV_PIX_FMT_YUV420P, AVCOL_SPC_BT470BG, AVCOL_RANGE_JPEG,
     [](auto& c) { return fullYuv(c, Bt601); }},
    {"JpegFormat", AV_PIX_FMT_YUVJ422P, AVCOL_SPC_BT470BG, AVCOL_RANGE_UNSPECIFIED,
     [](auto& c) { return fullYuv(c, Bt601); }},
    {"FullRange", AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, AVCOL_RANGE_JPEG, [](auto& c) { return fullYuv(c, Bt709); }},
    {"TenBits", AV_PIX_FMT_YUV420P10, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG,
     [](auto& c) { return limitedYuv(c, Bt709, 10); }},
    {"TwelveBits422", AV_PIX_FMT_YUV422P12, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG,
     [](auto& c) { return limitedYuv(c, Bt709, 12); }},
    {"Yuv444", AV_PIX_FMT_YUV444P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, [](auto& c) { return limitedYuv(c, Bt709, 8); }},
    {"Yuv411", AV_PIX_FMT_YUV411P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, [](auto& c) { return limitedYuv(c, Bt709, 8); }},
    {"SemiPlanar", AV_PIX_FMT_NV12, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, [](auto& c) { return limitedYuv(c, Bt709, 8); }},
    {"SemiPlanarTenBits601", AV_PIX_FMT_P010, AVCOL_SPC_SMPTE170M, AVCOL_RANGE_MPEG,
     [](auto& c) { return limitedYuv(c, Bt601, 10); }},
    {"Bt2020Matrix", AV_PIX_FMT_YUV420P10, AVCOL_SPC_BT2020_NCL, AVCOL_RANGE_MPEG,
     [](auto& c) { return limitedYuv(c, Bt2020, 10); }},
    {"PlanarRgb", AV_PIX_FMT_GBRP, AVCOL_SPC_RGB, AVCOL_RANGE_JPEG, bytes},
    {"PackedRgb", AV_PIX_FMT_RGB24, AVCOL_SPC_RGB, AVCOL_RANGE_UNSPECIFIED, bytes},
    {"PackedRgbWithAlpha", AV_PIX_FMT_BGRA, AVCOL_SPC_UNSPECIFIED, AVCOL_RANGE_MPEG, bytes},
};

class FrameColorTest : public testing::TestWithParam<ColorCase> {
protected:
    static ffmpeg::Frame frameOf(const Rgb& color)
    {
        const auto& row = GetParam();
        auto frame = test::plainPicture(Size, row.format, row.stored(color));
        frame->colorspace = row.matrix;
        frame->color_range = row.range;
        return frame;
    }
};

const Rgb Colors[] = {{0.8, 0.1, 0.1}, {0.1, 0.7, 0.2}, {0.15, 0.2, 0.9}, {0.5, 0.5, 0.5}, {0, 0, 0}, {1, 1, 1}};

TEST_P(FrameColorTest, ColorStaysTheSameInBt709)
{
    for (const auto& color : Colors) {
        EXPECT_THAT(composedColor(*frameOf(color)), Pointwise(NearTo(1.0), limitedYuv(color, Bt709, 8)));
    }
}

TEST_P(FrameColorTest, ColorStaysNearWithoutZimg)
{
    for (const auto& color : Colors) {
        EXPECT_THAT(composedColor(*frameOf(color), PictureScaler::Swscale),
                    Pointwise(NearTo(2.5), limitedYuv(color, Bt709, 8)));
    }
}

INSTANTIATE_TEST_SUITE_P(Format, FrameColorTest, testing::ValuesIn(Cases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FrameColorRules, GreyPictureHasNoColor)
{
    auto frame = test::plainPicture(Size, AV_PIX_FMT_GRAY8, {100, 0, 0});
    EXPECT_THAT(composedColor(*frame), Pointwise(NearTo(1.0), std::array{100, 128, 128}));
    frame->color_range = AVCOL_RANGE_JPEG;
    EXPECT_THAT(composedColor(*frame), Pointwise(NearTo(1.0), std::array{102, 128, 128}));
}

TEST(FrameColorRules, UntaggedHdSizeIsBt709)
{
    const auto frame = test::plainPicture({1280, 720}, AV_PIX_FMT_YUV420P10, limitedYuv(Colors[0], Bt709, 10));
    frame->colorspace = AVCOL_SPC_UNSPECIFIED;
    EXPECT_THAT(composedColor(*frame), Pointwise(NearTo(1.0), limitedYuv(Colors[0], Bt709, 8)));
}

TEST(FrameColorRules, GradientOfTenBitsIsDitheredInto8)
{
    const auto frame = test::plainPicture(Size, AV_PIX_FMT_YUV420P10, {402, 512, 512});
    EXPECT_NEAR(composedColor(*frame)[0], 100.5, 0.1);
}

/// Colours of BT.2020 that BT.709 has too: their linear light is mixed by the primaries.
TEST(FrameColorRules, PrimariesOfBt2020BecomeThoseOfBt709)
{
    // The linear BT.2020 values of BT.709's (0.5, 0.1, 0.1): its red, with white added.
    const auto gamma = [](double linear) { return std::pow(linear, 1 / 2.4); };
    const Rgb inBt2020{gamma(0.1 + 0.4 * 0.6274), gamma(0.1 + 0.4 * 0.0691), gamma(0.1 + 0.4 * 0.0164)};
    const auto frame = test::plainPicture(Size, AV_PIX_FMT_YUV420P10, limitedYuv(inBt2020, Bt2020, 10));
    frame->colorspace = AVCOL_SPC_BT2020_NCL;
    frame->color_primaries = AVCOL_PRI_BT2020;
    frame->color_trc = AVCOL_TRC_BT2020_10;
    EXPECT_THAT(composedColor(*frame),
                Pointwise(NearTo(1.5), limitedYuv({gamma(0.5), gamma(0.1), gamma(0.1)}, Bt709, 8)));
}

double pq(double luminance)
{
    const double power = std::pow(luminance / 10'000, 0.1593017578125);
    return std::pow((0.8359375 + 18.8515625 * power) / (1 + 18.6875 * power), 78.84375);
}

/// The signal of a grey on a screen with a peak of 1,000 cd/m².
double hlg(double luminance)
{
    const double scene = std::pow(luminance / 1000, 1 / 1.2);
    return scene <= 1.0 / 12 ? std::sqrt(3 * scene) : 0.17883277 * std::log(12 * scene - 0.28466892) + 0.55991073;
}

struct HdrCase {
    const char* name;
    AVColorTransferCharacteristic transfer;
    double (*signal)(double);
};

void PrintTo(const HdrCase& row, std::ostream* out)
{
    *out << row.name;
}

class HdrTest : public testing::TestWithParam<HdrCase> {
protected:
    static double lumaOf(double luminance, QSize size = Size)
    {
        const double signal = GetParam().signal(luminance);
        const auto frame =
            test::plainPicture(size, AV_PIX_FMT_YUV420P10, limitedYuv({signal, signal, signal}, Bt2020, 10));
        frame->colorspace = AVCOL_SPC_BT2020_NCL;
        frame->color_primaries = AVCOL_PRI_BT2020;
        frame->color_trc = GetParam().transfer;
        const auto color = composedColor(*frame);
        EXPECT_NEAR(color[1], 128, 1);
        EXPECT_NEAR(color[2], 128, 1);
        return color[0];
    }
};

TEST_P(HdrTest, DarkAndMiddleTonesKeepTheirBrightness)
{
    // As on an SDR screen whose white is 203 cd/m².
    for (const double luminance : {1.0, 5.0, 20.0, 50.0, 100.0}) {
        EXPECT_NEAR(lumaOf(luminance), 16 + 219 * std::pow(luminance / 203, 1 / 2.4), 1.5) << luminance;
    }
}

TEST_P(HdrTest, WhiteIsNearWhiteAndHighlightsStayApart)
{
    EXPECT_NEAR(lumaOf(203), 217, 2);
    EXPECT_NEAR(lumaOf(1000), 235, 1.5);
    EXPECT_GT(lumaOf(400), lumaOf(203) + 5);
    EXPECT_GT(lumaOf(1000), lumaOf(400) + 3);
}

TEST_P(HdrTest, BrightnessIsTheSameAtEachScale)
{
    for (const auto size : {QSize(32, 32), QSize(64, 64), QSize(256, 256)}) {
        EXPECT_NEAR(lumaOf(80, size), lumaOf(80), 0.5) << size.width();
    }
}

INSTANTIATE_TEST_SUITE_P(Transfer, HdrTest,
                         testing::Values(HdrCase{"Pq", AVCOL_TRC_SMPTE2084, pq},
                                         HdrCase{"Hlg", AVCOL_TRC_ARIB_STD_B67, hlg}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace quelto
