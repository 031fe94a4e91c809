// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/OutputName.h"

#include "base/files/FileName.h"
#include "library/naming/ClipName.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct NameCase {
    const char* name;
    const char* clip;
    int attempt;
    const char* copy;
    const char* vertical;
};

class OutputName : public testing::TestWithParam<NameCase> { };

TEST_P(OutputName, HasTheStemAMarkAndANumber)
{
    const auto clip = decodeFileName(GetParam().clip);
    const auto attempt = GetParam().attempt;
    EXPECT_EQ(encodeFileName(copyFileName(clip, QStringLiteral("Discord"), attempt)), GetParam().copy);
    EXPECT_EQ(encodeFileName(aspectFileName(clip, AspectRatio::vertical, attempt)), GetParam().vertical);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OutputName,
    testing::Values(NameCase{"First", "X.mp4", 1, "X (Discord).mp4", "X (9x16).mp4"},
                    NameCase{"Second", "X.mp4", 2, "X (Discord 2).mp4", "X (9x16) (2).mp4"},
                    NameCase{"Many", "X.mp4", 1234, "X (Discord 1234).mp4", "X (9x16) (1234).mp4"},
                    NameCase{"OtherContainer", "X.mov", 1, "X (Discord).mp4", "X (9x16).mp4"},
                    NameCase{"OnlyTheLastExtensionGoes", "a.b.mp4", 1, "a.b (Discord).mp4", "a.b (9x16).mp4"},
                    NameCase{"NoExtension", "X", 2, "X (Discord 2).mp4", "X (9x16) (2).mp4"},
                    NameCase{"OnlyADotAtTheStart", ".mp4", 1, ".mp4 (Discord).mp4", ".mp4 (9x16).mp4"},
                    NameCase{"CopyOfACopy", "X (Discord).mp4", 1, "X (Discord) (Discord).mp4",
                             "X (Discord) (9x16).mp4"},
                    NameCase{"Placeholder", "100%1 %2.mp4", 2, "100%1 %2 (Discord 2).mp4", "100%1 %2 (9x16) (2).mp4"},
                    NameCase{"Turkish", "Gördüm ş.mp4", 1, "Gördüm ş (Discord).mp4", "Gördüm ş (9x16).mp4"},
                    NameCase{"BytesThatAreNoText", "a\xff\xc3.b\xfe.mp4", 1, "a\xff\xc3.b\xfe (Discord).mp4",
                             "a\xff\xc3.b\xfe (9x16).mp4"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(OutputNameOfAMoment, KeepsTheTierAndShowsTheCopyInTheLabel)
{
    const auto clip = QStringLiteral("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] Penta Kill.mp4");
    const auto trimmed = parseClipFileName(copyFileName(clip, QStringLiteral("trimmed"), 2));
    ASSERT_TRUE(trimmed.moment);
    EXPECT_EQ(trimmed.moment->tier, ClipTier::epic);
    EXPECT_EQ(trimmed.moment->label, QStringLiteral("Penta Kill (trimmed 2)"));
    const auto tall = parseClipFileName(aspectFileName(clip, AspectRatio::portrait, 2));
    EXPECT_EQ(tall.moment->label, QStringLiteral("Penta Kill (4x5) (2)"));
    EXPECT_TRUE(hasTallMark(tall.title));
}

} // namespace
} // namespace quelto
