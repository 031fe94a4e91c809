// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FrameComposer.h"

#include "tests/media/filter/ExactBackground.h"
#include "tests/media/filter/TestFrames.h"
#include "tests/media/filter/TestLayouts.h"

#include <gtest/gtest.h>

#include <set>

namespace quelto {
namespace {

constexpr QSize Source(960, 540);
constexpr QSize Canvas(540, 960);
constexpr int Rows = 328;
constexpr int Tile = 16;

/// The background above the foreground.
ffmpeg::Frame composed(const AVFrame& frame, PictureScaler scaler = PictureScaler::Zimg)
{
    FrameComposer composer(test::blurOn(Canvas), scaler);
    return composer.compose(frame, {1, 1}, {});
}

test::ExactBackground exactOf(const AVFrame& frame)
{
    return {frame, test::blurLayout(Source, Canvas), 0, Rows};
}

struct Scene {
    const char* name;
    ffmpeg::Frame (*draw)(QSize);
};

void PrintTo(const Scene& scene, std::ostream* out)
{
    *out << scene.name;
}

class BlurredBackgroundTest : public testing::TestWithParam<Scene> { };

TEST_P(BlurredBackgroundTest, EqualsAnExactGaussianToTheEdgesOfTheCanvas)
{
    const auto frame = GetParam().draw(Source);
    const auto exact = exactOf(*frame);
    const auto result = composed(*frame);
    const auto fallback = composed(*frame, PictureScaler::Swscale);
    for (const int component : {0, 1, 2}) {
        const auto difference = test::difference(*result, exact, component, 0, Rows);
        // Rounding to 8 bits with dithering leaves 56 dB.
        EXPECT_GT(difference.psnr, 54) << component;
        EXPECT_LT(difference.largest, 4) << component;
        EXPECT_GT(test::difference(*fallback, exact, component, 0, Rows).psnr, 48) << component;
    }
}

INSTANTIATE_TEST_SUITE_P(Scene, BlurredBackgroundTest,
                         testing::Values(Scene{"Natural", test::naturalPicture}, Scene{"Chart", test::chartPicture},
                                         Scene{"Pillar", test::pillarPicture},
                                         Scene{"DarkGradient", test::darkGradient}),
                         [](const auto& row) { return std::string(row.param.name); });

double meanOf(const AVFrame& frame, int left, int top)
{
    double sum = 0;
    for (int y = top; y < top + Tile; ++y) {
        for (int x = left; x < left + Tile; ++x) {
            sum += frame.data[0][y * frame.linesize[0] + x];
        }
    }
    return sum / (Tile * Tile);
}

TEST(BlurredBackgroundRules, DarkGradientHasNoBands)
{
    const auto frame = test::darkGradient(Source);
    const auto exact = exactOf(*frame);
    const auto result = composed(*frame);
    std::set<int> levels;
    std::set<int> exactLevels;
    double largest = 0;
    for (int top = 0; top + Tile <= Rows; top += Tile) {
        double sum = 0;
        for (int y = top; y < top + Tile; ++y) {
            levels.insert(result->data[0][y * result->linesize[0] + 256]);
            exactLevels.insert(int(std::lround(exact.valueAt(0, 256, y))));
            sum += exact.valueAt(0, 256, y) / Tile;
        }
        largest = std::max(largest, std::abs(meanOf(*result, 256, top) - sum));
    }
    EXPECT_GE(levels.size(), exactLevels.size());
    // Without dithering it is up to half a level.
    EXPECT_LT(largest, 0.15);
}

TEST(BlurredBackgroundRules, UnchangedPictureGivesAnUnchangedBackground)
{
    const auto frame = test::naturalPicture(Source);
    FrameComposer composer(test::blurOn(Canvas));
    const auto first = composer.compose(*frame, {1, 1}, {});
    for (int i = 0; i < 3; ++i) {
        const auto next = composer.compose(*frame, {1, 1}, {});
        EXPECT_EQ(test::largestChange(*first, *next), 0);
    }
}

TEST(BlurredBackgroundRules, SlowPanChangesItSmoothly)
{
    const auto scene = test::naturalPicture({Source.width() + 16, Source.height()});
    FrameComposer composer(test::blurOn(Canvas));
    std::vector<ffmpeg::Frame> results;
    for (int step = 0; step < 6; ++step) {
        FilterGraph pan(*scene, "crop=960:540:y=0:exact=1:x=" + std::to_string(step * 2));
        pan.push(*scene);
        results.push_back(composer.compose(*pan.tryPull(), {1, 1}, {}));
    }
    double jitter = 0;
    for (std::size_t i = 2; i < results.size(); ++i) {
        for (int top = 0; top + Tile <= Rows; top += Tile) {
            for (int left = 0; left + Tile <= Canvas.width(); left += Tile) {
                const auto change = meanOf(*results[i], left, top) - meanOf(*results[i - 1], left, top);
                const auto before = meanOf(*results[i - 1], left, top) - meanOf(*results[i - 2], left, top);
                jitter = std::max(jitter, std::abs(change - before));
            }
        }
    }
    // Units: levels of a tile's mean.
    EXPECT_LT(jitter, 0.35);
}

TEST(BlurredBackgroundRules, DarkColorsDoNotBecomeMoreVivid)
{
    // A dark red, which the background darkens to black.
    const auto frame = test::plainPicture(Source, AV_PIX_FMT_YUV420P, {22, 125, 141});
    const auto exact = exactOf(*frame);
    const auto result = composed(*frame);
    for (const int component : {0, 1, 2}) {
        EXPECT_NEAR(test::valueAt(*result, component, {100, 100}), exact.valueAt(component, 50, 50), 1) << component;
    }
    EXPECT_LT(test::valueAt(*result, 2, {100, 100}), 136);
}

} // namespace
} // namespace quelto
