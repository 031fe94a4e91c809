// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/keys/KeyCodes.h"

#include "base/keys/HotKeyText.h"

#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon.h>

#include <map>
#include <memory>
#include <set>

namespace quelto {
namespace {

TEST(KeyCodes, MatchAnsiPositions)
{
    for (const auto& [name, code] : std::map<std::string_view, std::uint32_t>{{"AC01", 0},
                                                                              {"AC02", 1},
                                                                              {"AB03", 8},
                                                                              {"AD01", 12},
                                                                              {"AE01", 18},
                                                                              {"RTRN", 36},
                                                                              {"SPCE", 49},
                                                                              {"FK01", 122},
                                                                              {"FK12", 111},
                                                                              {"KP0", 82},
                                                                              {"UP", 126}}) {
        EXPECT_EQ(keyCodeForXkbName(name), code) << name;
    }
}

TEST(KeyCodes, RoundTripThroughEveryPosition)
{
    for (const auto& position : keyPositions()) {
        EXPECT_EQ(keyCodeForScanCode(position.scanCode), position.code) << position.xkbName;
        EXPECT_EQ(keyCodeForXkbName(position.xkbName), position.code) << position.xkbName;
        const auto positions = positionsOfKeyCode(position.code);
        EXPECT_TRUE(std::ranges::any_of(positions,
                                        [&](const KeyPosition& other) { return other.scanCode == position.scanCode; }));
    }
}

TEST(KeyCodes, AreMissingForModifiersAndUnknownKeys)
{
    constexpr std::uint32_t LeftShift = 42;
    EXPECT_FALSE(keyCodeForScanCode(LeftShift));
    EXPECT_FALSE(keyCodeForScanCode(0));
    EXPECT_FALSE(keyCodeForXkbName("LFSH"));
    EXPECT_FALSE(keyCodeForXkbName(""));
    EXPECT_TRUE(positionsOfKeyCode(200).empty());
}

TEST(KeyCodes, PositionsAreUnique)
{
    std::set<std::uint32_t> scanCodes;
    std::set<std::string_view> names;
    for (const auto& position : keyPositions()) {
        EXPECT_TRUE(scanCodes.insert(position.scanCode).second) << position.xkbName;
        EXPECT_TRUE(names.insert(position.xkbName).second) << position.xkbName;
    }
}

TEST(KeyCodes, CoverEveryNamedKey)
{
    for (std::uint32_t code = 0; code < 256; ++code) {
        if (specialKeyName(code)) {
            EXPECT_FALSE(positionsOfKeyCode(code).empty()) << code;
        }
    }
}

TEST(KeyCodes, MatchTheSystemsXkbKeymap)
{
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                             &xkb_context_unref);
    constexpr xkb_rule_names Names{.rules = "evdev", .model = "pc105", .layout = "us"};
    const std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> keymap(
        xkb_keymap_new_from_names(context.get(), &Names, XKB_KEYMAP_COMPILE_NO_FLAGS), &xkb_keymap_unref);
    ASSERT_TRUE(keymap);
    for (const auto& position : keyPositions()) {
        EXPECT_EQ(xkb_keymap_key_by_name(keymap.get(), position.xkbName), position.scanCode + 8) << position.xkbName;
    }
}

} // namespace
} // namespace quelto
