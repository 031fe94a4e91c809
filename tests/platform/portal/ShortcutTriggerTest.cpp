// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/ShortcutTrigger.h"

#include "base/keys/HotKeyText.h"
#include "base/keys/KeyCodes.h"

#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <set>

namespace quelto {

namespace {

QString trigger(std::uint32_t keyCode, const char* characters = "")
{
    return shortcutTrigger(keyCode, 0, QString::fromUtf8(characters));
}

TEST(ShortcutTrigger, NamesModifiersInOneOrder)
{
    using namespace modifierBits;
    EXPECT_EQ(shortcutTrigger(8, control | option | shift | command, {}), QStringLiteral("CTRL+ALT+SHIFT+LOGO+c"));
    EXPECT_EQ(shortcutTrigger(8, option | shift, QStringLiteral("c")), QStringLiteral("ALT+SHIFT+c"));
    EXPECT_EQ(shortcutTrigger(122, 0, {}), QStringLiteral("F1"));
}

TEST(ShortcutTrigger, NamesWhatTheLayoutTypes)
{
    EXPECT_EQ(trigger(41), QStringLiteral("semicolon"));
    EXPECT_EQ(trigger(41, "ö"), QStringLiteral("odiaeresis"));
    EXPECT_EQ(trigger(41, "Ö"), QStringLiteral("odiaeresis"));
    EXPECT_EQ(trigger(12, "a"), QStringLiteral("a"));
    EXPECT_EQ(trigger(24, "+"), QStringLiteral("plus"));
    EXPECT_EQ(trigger(41, "ş"), QStringLiteral("scedilla"));
}

TEST(ShortcutTrigger, NamesTheUsKeyOfOtherLetters)
{
    EXPECT_EQ(trigger(8, "с"), QStringLiteral("c")) << "Cyrillic";
    EXPECT_EQ(trigger(8, "ψ"), QStringLiteral("c"));
    EXPECT_EQ(trigger(8, "لا"), QStringLiteral("c")) << "two characters";
    EXPECT_EQ(trigger(8, "\xf0\x9d\x94\x9e"), QStringLiteral("c")) << "a surrogate pair";
}

TEST(ShortcutTrigger, KeysThatTypeNothingDoNotFollowTheLayout)
{
    EXPECT_EQ(trigger(36, "x"), QStringLiteral("Return"));
    EXPECT_EQ(trigger(83, "1"), QStringLiteral("KP_1")) << "not the 1 above the letters";
    EXPECT_EQ(trigger(49, " "), QStringLiteral("space"));
}

TEST(ShortcutTrigger, AnUnknownKeyHasNoTrigger)
{
    EXPECT_EQ(shortcutTrigger(52, modifierBits::shift, {}), QString());
    EXPECT_EQ(shortcutTrigger(0xffffffff, 0, QStringLiteral("a")), QString());
}

struct Unref {
    void operator()(xkb_context* context) const noexcept { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const noexcept { xkb_keymap_unref(keymap); }
};

/// Whether a press of the key alone or with Shift, or Num Lock, has the name on the keyboard.
bool types(xkb_keymap* keymap, xkb_keycode_t key, xkb_keysym_t symbol)
{
    for (xkb_level_index_t level = 0; level < xkb_keymap_num_levels_for_key(keymap, key, 0); ++level) {
        const xkb_keysym_t* symbols = nullptr;
        const auto count = xkb_keymap_key_get_syms_by_level(keymap, key, 0, level, &symbols);
        if (count == 1 && *symbols == symbol) {
            return true;
        }
    }
    return false;
}

TEST(ShortcutTrigger, AgreesWithTheUsKeyboardOfXkb)
{
    const std::unique_ptr<xkb_context, Unref> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = "us", .variant = nullptr, .options = nullptr};
    const std::unique_ptr<xkb_keymap, Unref> keymap(
        xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    ASSERT_TRUE(keymap);
    // Keys that a US keyboard lacks, or that its map gives another name.
    const std::set<std::uint32_t> others{80, 90, 93, 94};
    int compared = 0;
    for (const auto& position : keyPositions()) {
        const auto name = trigger(position.code);
        const auto symbol = xkb_keysym_from_name(name.toLatin1().constData(), XKB_KEYSYM_NO_FLAGS);
        EXPECT_NE(symbol, static_cast<xkb_keysym_t>(XKB_KEY_NoSymbol)) << name.toStdString();
        const auto positions = positionsOfKeyCode(position.code);
        const auto isTyped = std::ranges::any_of(positions, [&](const KeyPosition& each) {
            return types(keymap.get(), xkb_keymap_key_by_name(keymap.get(), each.xkbName), symbol);
        });
        EXPECT_TRUE(isTyped || others.contains(position.code)) << position.code << ' ' << name.toStdString();
        ++compared;
    }
    EXPECT_GT(compared, 100);
}

} // namespace
} // namespace quelto
