// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/HeroNames.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(HeroNames, MatchDisplayNames)
{
    const std::pair<const char*, const char*> names[] = {
        {"npc_dota_hero_zuus", "Zeus"},
        {"npc_dota_hero_nevermore", "Shadow Fiend"},
        {"npc_dota_hero_obsidian_destroyer", "Outworld Destroyer"},
        {"npc_dota_hero_magnataur", "Magnus"},
        {"npc_dota_hero_furion", "Nature's Prophet"},
        {"npc_dota_hero_wisp", "Io"},
        {"npc_dota_hero_rattletrap", "Clockwerk"},
        {"npc_dota_hero_skeleton_king", "Wraith King"},
        {"npc_dota_hero_shredder", "Timbersaw"},
        {"npc_dota_hero_treant", "Treant Protector"},
        {"npc_dota_hero_drow_ranger", "Drow Ranger"},
        {"npc_dota_hero_storm_spirit", "Storm Spirit"},
        {"npc_dota_hero_crystal_maiden", "Crystal Maiden"},
        {"npc_dota_hero_doom_bringer", "Doom"},
        {"npc_dota_hero_life_stealer", "Lifestealer"},
        {"npc_dota_hero_windrunner", "Windranger"},
        {"npc_dota_hero_queenofpain", "Queen of Pain"},
        {"npc_dota_hero_antimage", "Anti-Mage"},
        {"npc_dota_hero_necrolyte", "Necrophos"},
        {"npc_dota_hero_abyssal_underlord", "Underlord"},
        {"npc_dota_hero_centaur", "Centaur Warrunner"},
        {"npc_dota_hero_vengefulspirit", "Vengeful Spirit"},
        {"npc_dota_hero_keeper_of_the_light", "Keeper of the Light"},
        {"npc_dota_hero_sand_king", "Sand King"},
        {"npc_dota_hero_faceless_void", "Faceless Void"},
        // Heroes without a special name get the capitalised words of the internal name.
        {"npc_dota_hero_dark_willow", "Dark Willow"},
        {"npc_dota_hero_axe", "Axe"},
        {"npc_dota_hero__odd__one_", "Odd One"},
        {"axe", "Axe"},
        {"axe_npc_dota_hero_two", "Axe Two"},
        {"keepsTHECase", "KeepsTHECase"},
        {"", ""},
        {"npc_dota_hero_", ""},
        {"___", ""},
    };
    for (const auto& [name, display] : names) {
        EXPECT_EQ(heroDisplayName(QString::fromUtf8(name)), QString::fromUtf8(display)) << name;
    }
}

} // namespace
} // namespace quelto
