// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/player/EventStyle.h"

#include "base/language/L10n.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

class EventStyleTest : public testing::Test {
protected:
    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    Theme theme{settings};
};

struct StyleCase {
    const char* name;
    const char* icon;
    QColor color;
    const char* title;
};

TEST_F(EventStyleTest, EachEventHasItsIconColorAndTitle)
{
    const QColor blue(0x3F, 0xB6, 0xFF);
    const QColor violet(0xB0, 0x70, 0xFF);
    const std::vector<StyleCase> cases{
        {"multikill_2", "flame.fill", Theme::gold(), "Double Kill"},
        {"multikill_3", "flame.fill", Theme::gold(), "Triple Kill"},
        {"multikill_4", "flame.fill", Theme::gold(), "Quadra Kill"},
        {"multikill_5", "flame.fill", Theme::gold(), "Penta / Rampage"},
        {"multikill_7", "flame.fill", Theme::gold(), "Penta / Rampage"},
        {"multikill_x", "flame.fill", Theme::gold(), "Double Kill"},
        {"multikill_", "flame.fill", Theme::gold(), "Double Kill"},
        {"multikill", "flame.fill", Theme::gold(), "multikill"},
        {"steal_Baron", "bolt.fill", violet, "Baron Çalma!"},
        {"steal", "bolt.fill", violet, "steal"},
        {"objective_Ejderha", "flag.fill", blue, "Ejderha"},
        {"objective", "flag.fill", blue, "objective"},
        {"kill", "scope", theme.accent(), "Kill"},
        {"solo_kill", "scope", theme.accent(), "Solo Kill"},
        {"my_death", "xmark", {0x9A, 0x9A, 0xA8}, "Ölüm"},
        {"assist", "hand.raised.fill", Theme::good(), "Asist"},
        {"ace", "crown.fill", Theme::gold(), "Ace"},
        {"first_blood", "drop.fill", theme.accent(), "İlk Kan"},
        {"tower", "building.columns.fill", blue, "Kule"},
        {"inhibitor", "building.columns.fill", blue, "İnhibitör"},
        {"boss_kill", "trophy.fill", Theme::gold(), "Boss"},
        {"victory", "trophy.fill", Theme::gold(), "Zafer"},
        {"dungeon_complete", "checkmark.seal.fill", Theme::gold(), "Mythic+"},
        {"laugh", "face.smiling.inverse", {0xFF, 0xD8, 0x4D}, "Kahkaha 😂"},
        {"killed", "circle.fill", theme.muted(), "killed"},
        {"pentakill_of_tomorrow", "circle.fill", theme.muted(), "pentakill_of_tomorrow"},
        {"", "circle.fill", theme.muted(), ""},
    };
    for (const auto& style : cases) {
        SCOPED_TRACE(style.name);
        const auto name = QString::fromUtf8(style.name);
        EXPECT_EQ(EventStyle::icon(name).toStdString(), style.icon);
        EXPECT_EQ(EventStyle::color(name, theme), style.color);
        EXPECT_EQ(EventStyle::title(name).toStdString(), style.title);
    }
}

} // namespace
} // namespace quelto
