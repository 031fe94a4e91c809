// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"
#include "export/rules/AspectRatio.h"
#include "export/rules/FillMode.h"
#include "library/naming/ClipName.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

template <typename Choices, typename Text> QStringList textsOf(const Choices& choices, Text text)
{
    QStringList texts;
    for (const auto each : choices) {
        texts.append(text(each));
    }
    return texts;
}

TEST(AspectRatio, RawValuesAreInTheDeclaredOrder)
{
    const QStringList values{QStringLiteral("16:9"), QStringLiteral("9:16"), QStringLiteral("1:1"),
                             QStringLiteral("4:5")};
    EXPECT_EQ(textsOf(allAspectRatios(), [](AspectRatio each) { return rawValue(each); }), values);
    EXPECT_EQ(textsOf(allAspectRatios(), [](AspectRatio each) { return id(each); }), values);
}

TEST(AspectRatio, TagHasNoColon)
{
    EXPECT_EQ(
        textsOf(allAspectRatios(), tag),
        (QStringList{QStringLiteral("16x9"), QStringLiteral("9x16"), QStringLiteral("1x1"), QStringLiteral("4x5")}));
}

TEST(AspectRatio, NamesOfPortraitPicturesHaveATallMark)
{
    const auto isTall = [](AspectRatio aspect) { return hasTallMark(u'(' + tag(aspect) + u')'); };
    EXPECT_TRUE(isTall(AspectRatio::vertical));
    EXPECT_TRUE(isTall(AspectRatio::portrait));
    EXPECT_FALSE(isTall(AspectRatio::wide));
    EXPECT_FALSE(isTall(AspectRatio::square));
}

TEST(AspectRatio, IsReadFromItsRawValueOnly)
{
    for (const auto each : allAspectRatios()) {
        EXPECT_EQ(aspectRatioFromRawValue(rawValue(each)), each);
    }
    for (const auto* text : {u"", u"16x9", u"16:9 ", u"16:10", u"wide"}) {
        EXPECT_EQ(aspectRatioFromRawValue(QStringView(text)), std::nullopt);
    }
}

TEST(FillMode, RawValuesAreInTheDeclaredOrder)
{
    const QStringList values{QStringLiteral("blur"), QStringLiteral("crop")};
    EXPECT_EQ(textsOf(allFillModes(), [](FillMode each) { return rawValue(each); }), values);
    EXPECT_EQ(textsOf(allFillModes(), [](FillMode each) { return id(each); }), values);
}

TEST(FillMode, IsReadFromItsRawValueOnly)
{
    for (const auto each : allFillModes()) {
        EXPECT_EQ(fillModeFromRawValue(rawValue(each)), each);
    }
    for (const auto* text : {u"", u"Blur", u"blurred"}) {
        EXPECT_EQ(fillModeFromRawValue(QStringView(text)), std::nullopt);
    }
}

TEST(FillMode, LabelFollowsTheLanguage)
{
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(textsOf(allFillModes(), label),
              (QStringList{QStringLiteral("Bulanık arka plan"), QStringLiteral("Ortadan kırp")}));
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(textsOf(allFillModes(), label),
              (QStringList{QStringLiteral("Blurred background"), QStringLiteral("Crop center")}));
}

} // namespace
} // namespace quelto
