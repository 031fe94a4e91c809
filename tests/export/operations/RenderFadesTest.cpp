// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/VideoTools.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/DecodedPictures.h"
#include "tests/media/probe/Probe.h"

#include <cmath>

namespace quelto {
namespace {

using namespace test;

struct Part {
    double start = 0;
    double end = 0;
};

/// From 0 to 1 at the start of a part, and back to 0 at its end.
double ramp(const std::vector<Part>& parts, double length, double time)
{
    for (const auto& part : parts) {
        if (time >= part.start && time < part.end) {
            return std::min({(time - part.start) / length, (part.end - time) / length, 1.0});
        }
    }
    return 1;
}

class RenderFadesTest : public ExportTest {
protected:
    /// A clip of one colour and one tone.
    QString plain(const QString& name, double seconds) const
    {
        return clips.make(name,
                          QStringLiteral("-f lavfi -i color=c=0x60C0A0:s=320x180:r=60:d=%1 "
                                         "-f lavfi -i aevalsrc='0.4*sin(2*PI*1000*t)':c=stereo:d=%1 -c:v libx264 "
                                         "-preset ultrafast -qp 4 -pix_fmt yuv420p -c:a aac -b:a 192k")
                              .arg(seconds));
    }

    QString rendered(const QStringList& paths, VideoTools::Transitions transitions)
    {
        auto output = clips.path(QStringLiteral("out.mp4"));
        const auto result = attempt([&](const ExportControl& control) {
            VideoTools::render({.clips = paths, .transitions = transitions, .output = output}, control);
            return output;
        });
        EXPECT_EQ(result.message.toStdString(), "");
        expectValidExport(output);
        return output;
    }

    /// The loudness of the tone around a time, where 1 is that in the clip.
    static double gainAt(const std::vector<float>& audio, double time)
    {
        constexpr double Half = 0.005;
        double sum = 0;
        int count = 0;
        for (auto i = static_cast<std::size_t>((time - Half) * 48000) * 2;
             i < static_cast<std::size_t>((time + Half) * 48000) * 2; ++i) {
            sum += i < audio.size() ? double{audio[i]} * audio[i] : 0.0;
            ++count;
        }
        return std::sqrt(2 * sum / count) / 0.4;
    }
};

const std::vector<Part> Parts{{0, 1.5}, {1.5, 2.5}, {2.5, 2.9}};

TEST_F(RenderFadesTest, EachClipFadesFromBlackAndBack)
{
    const auto output = rendered(
        {plain(QStringLiteral("1.mp4"), 1.5), plain(QStringLiteral("2.mp4"), 1), plain(QStringLiteral("3.mp4"), 0.4)},
        VideoTools::Transitions::fade);
    const auto colors = meanColors(output, QRect(0, 0, 320, 180));
    ASSERT_EQ(colors.size(), 174U);
    const auto full = colorAt(colors, 0.75);
    for (const auto& [time, color] : colors) {
        const auto expected = ramp(Parts, 0.3, time);
        EXPECT_NEAR(color.red(), full.red() * expected, 0.03 * 255) << time;
        EXPECT_NEAR(color.green(), full.green() * expected, 0.03 * 255) << time;
        EXPECT_NEAR(color.blue(), full.blue() * expected, 0.03 * 255) << time;
    }
    for (const auto& part : Parts) {
        EXPECT_LE(colorAt(colors, part.start).green(), 1) << part.start;
    }
    EXPECT_EQ(colorAt(colors, 0.3), full);
    EXPECT_EQ(colorAt(colors, 1.2), full);
}

TEST_F(RenderFadesTest, SoundFadesExceptInShortClips)
{
    const auto output = rendered(
        {plain(QStringLiteral("1.mp4"), 1.5), plain(QStringLiteral("2.mp4"), 1), plain(QStringLiteral("3.mp4"), 0.4)},
        VideoTools::Transitions::fade);
    const auto audio = decodeAudio(output, 0);
    for (double time = 0.02; time < 2.46; time += 0.02) {
        EXPECT_NEAR(gainAt(audio, time), ramp({Parts[0], Parts[1]}, 0.25, time), 0.04) << time;
    }
    for (double time = 2.54; time < 2.86; time += 0.02) {
        EXPECT_NEAR(gainAt(audio, time), 1, 0.04) << time;
    }
}

TEST_F(RenderFadesTest, WithoutTransitionsNothingFades)
{
    const auto output = rendered({plain(QStringLiteral("1.mp4"), 0.6), plain(QStringLiteral("2.mp4"), 0.6)},
                                 VideoTools::Transitions::none);
    const auto colors = meanColors(output, QRect(0, 0, 320, 180));
    for (const auto& [time, color] : colors) {
        EXPECT_NEAR(color.green(), 0xC0, 6) << time;
    }
    const auto audio = decodeAudio(output, 0);
    for (double time = 0.04; time < 1.16; time += 0.02) {
        // The tone starts again in the second clip.
        if (std::abs(time - 0.6) > 0.03) {
            EXPECT_NEAR(gainAt(audio, time), 1, 0.04) << time;
        }
    }
}

} // namespace
} // namespace quelto
