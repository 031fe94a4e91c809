// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/export/operations/ExportFixture.h"

#include <QFileInfo>

namespace quelto {
namespace {

using namespace test;

struct ShrinkCase {
    const char* name;
    const char* content;
    int limitMB;
};

class ShrinkAccuracyTest : public ExportTest, public testing::WithParamInterface<ShrinkCase> { };

/// The row "shrink-accuracy" of ./bench does the same with random clips of up to 90 seconds.
TEST_P(ShrinkAccuracyTest, FirstPassIsCloseBelowTheLimit)
{
    const auto& param = GetParam();
    const auto clip = clips.make(
        QStringLiteral("X.mp4"),
        QStringLiteral(
            "-f lavfi -i %1 -f lavfi -i anoisesrc=color=pink:r=48000:amplitude=0.4:seed=1 -shortest -c:v libx264 "
            "-preset ultrafast -qp 14 -pix_fmt yuv420p -c:a aac -b:a 192k -ac 2")
            .arg(QString::fromLatin1(param.content)));
    const auto limit = param.limitMB * 1e6;
    ASSERT_GT(static_cast<double>(QFileInfo(clip).size()), limit);
    const auto result = attempt(
        [&](const ExportControl& control) { return Exporter::compressForDiscord(clip, param.limitMB, control); });
    ASSERT_EQ(result.message.toStdString(), "");
    expectCompleteProgress(result.progress); // which begins anew in each pass
    const auto used = static_cast<double>(QFileInfo(result.path).size()) / limit;
    EXPECT_LE(used, 1);
    EXPECT_GE(used, 0.88);
}

INSTANTIATE_TEST_SUITE_P(Contents, ShrinkAccuracyTest,
                         testing::Values(ShrinkCase{"Moving", "testsrc2=s=640x360:r=60:d=6", 1},
                                         ShrinkCase{"Noisy", "testsrc2=s=640x360:r=30:d=4,noise=alls=16:allf=t", 2},
                                         ShrinkCase{"Zoom", "mandelbrot=s=640x360:r=24:maxiter=200,trim=duration=3", 1},
                                         ShrinkCase{"MostlyStill", "testsrc=s=1280x720:r=30:d=18", 1},
                                         ShrinkCase{"FastAndShort", "testsrc2=s=640x360:r=144:d=2,noise=alls=8:allf=t",
                                                    1}),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace quelto
