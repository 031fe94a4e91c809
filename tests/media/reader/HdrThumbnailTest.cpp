// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ClipReader.h"

#include "tests/media/reader/GeneratedClips.h"

#include <QColor>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using Light = std::array<double, 3>;

/// The luminance of SDR white in HDR. Units: cd/m².
constexpr double White = 203;

/// The light of a colour on an SDR screen, with the primaries of BT.2020. Units: cd/m².
Light lightOf(const QColor& color)
{
    const auto linear = [](int value) { return White * std::pow(value / 255.0, 2.4); };
    const double red = linear(color.red());
    const double green = linear(color.green());
    const double blue = linear(color.blue());
    return {0.6274 * red + 0.3293 * green + 0.0433 * blue, 0.0691 * red + 0.9195 * green + 0.0114 * blue,
            0.0164 * red + 0.0880 * green + 0.8956 * blue};
}

double lumaOf(const Light& color)
{
    return 0.2627 * color[0] + 0.6780 * color[1] + 0.0593 * color[2];
}

Light pq(const Light& light)
{
    Light signal{};
    std::ranges::transform(light, signal.begin(), [](double value) {
        const double power = std::pow(value / 10'000, 0.1593017578125);
        return std::pow((0.8359375 + 18.8515625 * power) / (1 + 18.6875 * power), 78.84375);
    });
    return signal;
}

/// For a screen with a peak of 1,000 cd/m².
Light hlg(const Light& light)
{
    const double scale = std::pow(lumaOf(light) / 1000, -0.2 / 1.2) / 1000;
    Light signal{};
    std::ranges::transform(light, signal.begin(), [scale](double value) {
        const double scene = value * scale;
        return scene <= 1.0 / 12 ? std::sqrt(3 * scene) : 0.17883277 * std::log(12 * scene - 0.28466892) + 0.55991073;
    });
    return signal;
}

struct HdrClip {
    const char* name;
    const char* transfer;
    Light (*signal)(const Light&);
};

void PrintTo(const HdrClip& clip, std::ostream* out)
{
    *out << clip.name;
}

class HdrThumbnailTest : public testing::TestWithParam<HdrClip> {
protected:
    QColor thumbnailOf(const QColor& color) const
    {
        const auto [red, green, blue] = GetParam().signal(lightOf(color));
        const double luma = lumaOf({red, green, blue});
        const auto clip = m_clips.make(
            QStringLiteral("a.mp4"),
            QStringLiteral("-f lavfi -i color=c=gray:s=1282x722:r=10:d=0.2,format=yuv420p10le,geq=lum=%1:cb=%2:cr=%3 "
                           "-c:v libx265 -x265-params log-level=none:qp=1 -tag:v hvc1 -colorspace bt2020nc "
                           "-color_primaries bt2020 -color_range tv -color_trc %4")
                .arg(std::lround(64 + 876 * luma))
                .arg(std::lround(512 + 896 * (blue - luma) / 1.8814))
                .arg(std::lround(512 + 896 * (red - luma) / 1.4746))
                .arg(QLatin1String(GetParam().transfer)));
        const auto image = readClip(clip).thumbnail;
        EXPECT_EQ(image.size(), QSize(640, 360));
        return image.pixelColor(image.width() / 2, image.height() / 2);
    }

private:
    test::GeneratedClips m_clips;
};

TEST_P(HdrThumbnailTest, ColorsLookAsInSdr)
{
    for (const auto& color : {QColor(0xC8, 0x3C, 0x5A), QColor(0x30, 0x90, 0x40), QColor(0x60, 0x60, 0x60)}) {
        const auto result = thumbnailOf(color);
        EXPECT_NEAR(result.red(), color.red(), 4);
        EXPECT_NEAR(result.green(), color.green(), 4);
        EXPECT_NEAR(result.blue(), color.blue(), 4);
    }
}

TEST_P(HdrThumbnailTest, WhiteIsNearlyWhite)
{
    const auto white = thumbnailOf(Qt::white);
    EXPECT_NEAR(white.red(), 234, 4);
    EXPECT_NEAR(white.green(), 234, 4);
    EXPECT_NEAR(white.blue(), 234, 4);
}

INSTANTIATE_TEST_SUITE_P(Transfer, HdrThumbnailTest,
                         testing::Values(HdrClip{"Pq", "smpte2084", pq}, HdrClip{"Hlg", "arib-std-b67", hlg}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace quelto
