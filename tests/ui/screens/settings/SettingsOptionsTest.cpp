// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SettingsOptions.h"

#include "base/language/L10n.h"
#include "base/settings/AppSettings.h"
#include "ui/theme/Palette.h"

#include <QColor>
#include <gtest/gtest.h>

namespace quelto {
namespace {

class SettingsOptionsTest : public testing::Test {
protected:
    void SetUp() override { L10n::use(QStringLiteral("en")); }
    void TearDown() override { L10n::use(QStringLiteral("tr")); }
};

struct LengthRow {
    int seconds;
    const char* english;
    const char* turkish;
};

TEST_F(SettingsOptionsTest, ClipLengthIsInSecondsBelowAMinute)
{
    constexpr LengthRow rows[]{{15, "15s", "15 sn"},     {45, "45s", "45 sn"},      {59, "59s", "59 sn"},
                               {60, "1 min", "1 dk"},    {90, "1.5 min", "1.5 dk"}, {120, "2 min", "2 dk"},
                               {300, "5 min", "5 dk"},   {61, "1.0 min", "1.0 dk"}, {119, "1.9 min", "1.9 dk"},
                               {66, "1.1 min", "1.1 dk"}};
    for (const auto& row : rows) {
        L10n::use(QStringLiteral("en"));
        EXPECT_EQ(SettingsOptions::clipLengthLabel(row.seconds).toStdString(), row.english);
        L10n::use(QStringLiteral("tr"));
        EXPECT_EQ(SettingsOptions::clipLengthLabel(row.seconds).toStdString(), row.turkish);
    }
}

TEST_F(SettingsOptionsTest, OffersAllValuesInOrder)
{
    EXPECT_EQ(SettingsOptions::clipLengths(), (QVariantList{15, 30, 45, 60, 90, 120, 180, 300}));
    EXPECT_EQ(SettingsOptions::fpsOptions(), (QVariantList{30, 60, 120}));
    EXPECT_EQ(SettingsOptions::discordLimits(), (QVariantList{10, 50, 500}));
    QStringList labels;
    for (const auto& each : SettingsOptions::resolutions()) {
        labels.append(each + u'=' + SettingsOptions::resolutionLabel(each));
    }
    for (const auto& each : SettingsOptions::qualities()) {
        labels.append(each + u'=' + SettingsOptions::qualityLabel(each));
    }
    for (const auto& each : SettingsOptions::codecs()) {
        labels.append(each + u'=' + SettingsOptions::codecLabel(each));
    }
    EXPECT_EQ(labels.join(u' ').toStdString(),
              "native=Native p1440=1440p p1080=1080p p720=720p low=Low medium=Medium high=High ultra=Ultra "
              "h264=H.264 hevc=HEVC");
}

TEST_F(SettingsOptionsTest, LanguagesHaveTheirOwnNames)
{
    QStringList texts;
    for (const auto& each : SettingsOptions::languages()) {
        const auto choice = each.toMap();
        texts.append(choice.value(QStringLiteral("value")).toString() + u'=' +
                     choice.value(QStringLiteral("text")).toString());
    }
    ASSERT_EQ(texts.size(), 8);
    EXPECT_EQ(texts.first().toStdString(), "system=System language");
    EXPECT_EQ(texts.at(1).toStdString(), "tr=Türkçe");
    EXPECT_EQ(texts.last().toStdString(), "ru=Русский");
}

TEST_F(SettingsOptionsTest, PalettesHaveTheirColoursAndNames)
{
    const auto palettes = SettingsOptions::palettes();
    const auto all = Palette::all();
    ASSERT_EQ(palettes.size(), all.size());
    for (qsizetype i = 0; i < all.size(); ++i) {
        const auto map = palettes.at(i).toMap();
        EXPECT_EQ(map.value(QStringLiteral("id")).toString(), all.at(i).id);
        EXPECT_EQ(map.value(QStringLiteral("name")).toString(), all.at(i).name);
        EXPECT_EQ(map.value(QStringLiteral("accent")).value<QColor>(), all.at(i).accent);
        EXPECT_EQ(map.value(QStringLiteral("gradient")).toList().size(), all.at(i).gradient.size());
    }
    EXPECT_EQ(SettingsOptions::paletteInForce(QStringLiteral("ocean")), QStringLiteral("ocean"));
    EXPECT_EQ(SettingsOptions::paletteInForce(QStringLiteral("unknown")), QStringLiteral("ember"));
}

} // namespace
} // namespace quelto
