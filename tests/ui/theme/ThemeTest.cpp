// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/Theme.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto {
namespace {

class ThemeTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString file = folder.filePath(QStringLiteral("Quelto.conf"));
};

TEST_F(ThemeTest, FollowsTheSetting)
{
    AppSettings settings(file);
    const Theme theme(settings);
    EXPECT_EQ(theme.accent(), Palette::find(QStringLiteral("ember")).accent);
    QSignalSpy changes(&theme, &Theme::changed);
    settings.setColorTheme(QStringLiteral("ocean"));
    EXPECT_EQ(changes.count(), 1);
    const auto ocean = Palette::find(QStringLiteral("ocean"));
    EXPECT_EQ(theme.bg(), ocean.bg);
    EXPECT_EQ(theme.sidebar(), ocean.sidebar);
    EXPECT_EQ(theme.panel(), ocean.panel);
    EXPECT_EQ(theme.card(), ocean.card);
    EXPECT_EQ(theme.cardHover(), ocean.cardHover);
    EXPECT_EQ(theme.border(), ocean.border);
    EXPECT_EQ(theme.accent(), ocean.accent);
    EXPECT_EQ(theme.accentDark(), ocean.accentDark);
    EXPECT_EQ(theme.text(), ocean.text);
    EXPECT_EQ(theme.muted(), ocean.muted);
    EXPECT_EQ(theme.dim(), ocean.dim);
    EXPECT_EQ(theme.gradient().size(), 3);
}

TEST_F(ThemeTest, ShowsTheFirstPaletteForAnUnknownOneAndKeepsTheSetting)
{
    const auto unknown = QStringLiteral("aurora");
    {
        AppSettings settings(file);
        settings.setColorTheme(unknown);
        const Theme theme(settings);
        EXPECT_EQ(theme.bg(), Palette::find(QStringLiteral("ember")).bg);
        EXPECT_EQ(settings.colorTheme(), unknown);
    }
    const AppSettings again(file);
    EXPECT_EQ(again.colorTheme(), unknown);
}

TEST_F(ThemeTest, KeepsTheFixedColoursInEveryPalette)
{
    EXPECT_EQ(Theme::live(), QColor(0xFF, 0x3B, 0x3B));
    EXPECT_EQ(Theme::good(), QColor(0x33, 0xD1, 0x7A));
    EXPECT_EQ(Theme::gold(), QColor(0xFF, 0xC5, 0x3D));
    EXPECT_EQ(Theme::violet(), QColor(0x8B, 0x7C, 0xFF));
    EXPECT_EQ(Theme::discord(), QColor(0x58, 0x65, 0xF2));
}

} // namespace
} // namespace quelto
