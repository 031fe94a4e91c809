// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/FrameConverter.h"

#include "ReferenceImage.h"

#include <gtest/gtest.h>

#include <cstring>

namespace quelto {
namespace {

using test::SourceImage;

constexpr double MinPsnrDecibels = 45;

std::shared_ptr<VideoFrame> converted(const RgbImage& image, QSize size,
                                      InstructionSet instructionSet = bestInstructionSet())
{
    FramePool pool(size, 1);
    auto frame = pool.tryAcquire();
    const auto rows = static_cast<std::size_t>(size.height()) * 3 / 2;
    std::memset(frame->luma, 0, static_cast<std::size_t>(frame->stride) * rows);
    FrameConverter(instructionSet).convert(image, *frame);
    return frame;
}

bool sameBytes(const VideoFrame& a, const VideoFrame& b)
{
    const auto rows = static_cast<std::size_t>(a.size.height()) * 3 / 2;
    return a.stride == b.stride && std::memcmp(a.luma, b.luma, static_cast<std::size_t>(a.stride) * rows) == 0;
}

struct NamedKind {
    const char* name;
    SourceImage::Kind kind;
};
constexpr NamedKind Kinds[] = {{"Natural", SourceImage::Kind::natural},
                               {"Gradient", SourceImage::Kind::gradient},
                               {"SaturatedNoise", SourceImage::Kind::saturatedNoise}};

struct ScaleCase {
    const char* name;
    QSize source;
    QSize output;
};
constexpr ScaleCase Scales[] = {
    {"SameSize", {640, 360}, {640, 360}},
    {"WidthNotAMultipleOfVectorSize", {646, 362}, {646, 362}},
    {"FourToThree", {640, 360}, {480, 270}},
    {"ThreeToTwo", {960, 540}, {640, 360}},
    {"Half", {640, 360}, {320, 180}},
    {"HalfWidthNotAMultipleOfVectorSize", {660, 372}, {330, 186}},
    {"Third", {960, 540}, {320, 180}},
    {"OddRatio", {683, 384}, {640, 360}},
    {"NotQuiteThreeToOne", {1001, 563}, {336, 188}},
    {"FullHdFrom1440", {2560, 1440}, {1920, 1080}},
    {"HdFrom768", {1366, 768}, {1280, 720}},
    {"WidthOnly", {700, 360}, {640, 360}},
    {"HeightOnly", {640, 400}, {640, 360}},
};

class Fidelity : public testing::TestWithParam<std::tuple<NamedKind, ScaleCase>> { };

TEST_P(Fidelity, PsnrIsAtLeast45DecibelsForLumaAndChroma)
{
    const auto& [kind, scale] = GetParam();
    const SourceImage image(kind.kind, scale.source);
    const auto measured =
        test::fidelity(*converted(image.view(), scale.output), test::referencePlanes(image, scale.output));
    RecordProperty("luma", std::to_string(measured.luma));
    RecordProperty("chroma", std::to_string(measured.chroma));
    std::printf("luma %.1f dB, chroma %.1f dB\n", measured.luma, measured.chroma);
    EXPECT_GE(measured.luma, MinPsnrDecibels);
    EXPECT_GE(measured.chroma, MinPsnrDecibels);
}

INSTANTIATE_TEST_SUITE_P(Pictures, Fidelity, testing::Combine(testing::ValuesIn(Kinds), testing::ValuesIn(Scales)),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).name) + std::get<1>(row.param).name;
                         });

class Kernels : public testing::TestWithParam<ScaleCase> { };

TEST_P(Kernels, AllInstructionSetsProduceTheSameBytes)
{
    for (const auto& kind : Kinds) {
        const SourceImage image(kind.kind, GetParam().source);
        const auto expected = converted(image.view(), GetParam().output, InstructionSet::portable);
        for (const auto instructionSet : {InstructionSet::ssse3, InstructionSet::avx2}) {
            if (isAvailable(instructionSet)) {
                EXPECT_TRUE(sameBytes(*converted(image.view(), GetParam().output, instructionSet), *expected))
                    << kind.name << " with instruction set " << static_cast<int>(instructionSet);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Kernels, testing::ValuesIn(Scales), [](const auto& row) { return row.param.name; });

struct ColourCase {
    const char* name;
    std::uint32_t rgb;
    int luma;
    int cb;
    int cr;
};
// The values of Recommendation BT.709 for full-amplitude colours in video range.
constexpr ColourCase Colours[] = {
    {"Black", 0x000000, 16, 128, 128}, {"White", 0xffffff, 235, 128, 128}, {"Red", 0xff0000, 63, 102, 240},
    {"Green", 0x00ff00, 173, 42, 26},  {"Blue", 0x0000ff, 32, 240, 118},   {"Grey", 0x808080, 126, 128, 128},
};

class Colour : public testing::TestWithParam<ColourCase> { };

TEST_P(Colour, HasStandardValuesAtEverySize)
{
    const auto& colour = GetParam();
    for (const auto output : {QSize(160, 90), QSize(120, 68), QSize(320, 180)}) {
        const auto frame = converted(SourceImage(colour.rgb, {160, 90}).view(), output);
        for (int y = 0; y < output.height(); ++y) {
            for (int x = 0; x < output.width(); ++x) {
                ASSERT_NEAR(frame->luma[y * frame->stride + x], colour.luma, 1) << x << ", " << y;
                const int expected = x % 2 == 0 ? colour.cb : colour.cr;
                const auto* chroma = frame->chroma + y / 2 * frame->stride;
                ASSERT_NEAR(chroma[x], expected, 1) << x << ", " << y;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Primaries, Colour, testing::ValuesIn(Colours), [](const auto& row) { return row.param.name; });

/// A copy of the image in another order of bytes, with padding at the end of each row.
struct OrderedImage {
    OrderedImage(const RgbImage& image, PixelOrder wanted)
        : size(image.size)
        , order(wanted)
        , stride(image.size.width() * bytesPerPixel(wanted) + 7)
        , pixels(static_cast<std::size_t>(stride) * static_cast<std::size_t>(image.size.height()), 0xee)
    {
        const auto step = static_cast<std::size_t>(bytesPerPixel(order));
        for (int y = 0; y < size.height(); ++y) {
            const auto* from = image.pixels + static_cast<std::ptrdiff_t>(y) * image.stride;
            auto* to = pixels.data() + static_cast<std::ptrdiff_t>(y) * stride;
            for (int x = 0; x < size.width(); ++x, from += 4, to += step) {
                to[0] = from[order == PixelOrder::rgbx ? 2 : 0];
                to[1] = from[1];
                to[2] = from[order == PixelOrder::rgbx ? 0 : 2];
            }
        }
    }

    RgbImage view() const { return {.pixels = pixels.data(), .stride = stride, .size = size, .order = order}; }

    QSize size;
    PixelOrder order;
    int stride;
    std::vector<std::uint8_t> pixels;
};

class Orders : public testing::TestWithParam<PixelOrder> { };

TEST_P(Orders, GiveTheSamePicture)
{
    const SourceImage image(SourceImage::Kind::saturatedNoise, {641, 361});
    const OrderedImage ordered(image.view(), GetParam());
    for (const auto output : {QSize(640, 360), QSize(320, 180), QSize(800, 450)}) {
        EXPECT_TRUE(sameBytes(*converted(ordered.view(), output), *converted(image.view(), output))) << output.width();
    }
}

INSTANTIATE_TEST_SUITE_P(Bytes, Orders, testing::Values(PixelOrder::bgrx, PixelOrder::rgbx, PixelOrder::bgr));

TEST(FrameConverter, CropsOddScreensInsteadOfScaling)
{
    const SourceImage image(SourceImage::Kind::saturatedNoise, {641, 361});
    auto cropped = image.view();
    cropped.size = {640, 360};
    EXPECT_TRUE(sameBytes(*converted(image.view(), {640, 360}), *converted(cropped, {640, 360})));
}

TEST(FrameConverter, EnlargesWithLinearInterpolation)
{
    // Black and white pixels: a linear ramp between their centres, without overshoot.
    std::uint8_t pixels[2 * 4] = {0, 0, 0, 0, 255, 255, 255, 0};
    const auto frame = converted({.pixels = pixels, .stride = 8, .size = {2, 1}}, {8, 2});
    const int expected[] = {16, 16, 43, 98, 153, 208, 235, 235};
    for (int x = 0; x < 8; ++x) {
        EXPECT_NEAR(frame->luma[x], expected[x], 1) << x;
    }
}

TEST(FrameConverter, AdaptsToChangedSourceSize)
{
    const SourceImage large(SourceImage::Kind::natural, {1000, 600});
    const SourceImage small(SourceImage::Kind::natural, {500, 300});
    FramePool pool({640, 360}, 2);
    FrameConverter converter;
    auto first = pool.tryAcquire();
    auto second = pool.tryAcquire();
    converter.convert(large.view(), *first);
    converter.convert(small.view(), *second);
    const auto measured = test::fidelity(*first, test::referencePlanes(large, {640, 360}));
    EXPECT_GE(measured.luma, MinPsnrDecibels);
    auto alone = converted(small.view(), {640, 360});
    std::vector<std::uint8_t> expected(alone->luma, alone->luma + 640 * 360);
    EXPECT_EQ(expected, std::vector<std::uint8_t>(second->luma, second->luma + 640 * 360));
}

TEST(FrameConverter, LeavesFrameUnchangedForEmptyImage)
{
    FramePool pool({16, 16}, 1);
    auto frame = pool.tryAcquire();
    frame->luma[0] = 99;
    FrameConverter().convert({}, *frame);
    EXPECT_EQ(frame->luma[0], 99);
}

} // namespace
} // namespace quelto
