// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/KeyPath.h"

#include <algorithm>
#include <memory>

namespace quelto {

namespace {

// The modifiers that the server itself knows. The bits above are names within the layout.
constexpr xkb_mod_mask_t ServerModifiers = 0xff;

struct StateUnref {
    void operator()(xkb_state* state) const noexcept { xkb_state_unref(state); }
};
using StatePtr = std::unique_ptr<xkb_state, StateUnref>;

/// The keyboard with some keys held down.
class PressedKeyboard {
public:
    PressedKeyboard(xkb_keymap* keymap, xkb_layout_index_t layout)
        : m_state(xkb_state_new(keymap))
        , m_layout(layout)
    {
        xkb_state_update_mask(m_state.get(), 0, 0, 0, 0, 0, layout);
    }

    void press(xkb_keycode_t key) { xkb_state_update_key(m_state.get(), key, XKB_KEY_DOWN); }
    void release(xkb_keycode_t key) { xkb_state_update_key(m_state.get(), key, XKB_KEY_UP); }
    bool isLayoutSwitched() const
    {
        return xkb_state_serialize_layout(m_state.get(), XKB_STATE_LAYOUT_EFFECTIVE) != m_layout;
    }
    xkb_mod_mask_t modifiers() const
    {
        return xkb_state_serialize_mods(m_state.get(), XKB_STATE_MODS_EFFECTIVE) & ServerModifiers;
    }

private:
    StatePtr m_state;
    xkb_layout_index_t m_layout;
};

/// Every choice of one key for each modifier.
std::vector<ModifierKeys> choices(const std::vector<ModifierKeys>& modifierKeys)
{
    std::vector<ModifierKeys> found{{}};
    for (const auto& keys : modifierKeys) {
        std::vector<ModifierKeys> longer;
        for (const auto& start : found) {
            for (const auto key : keys) {
                longer.push_back(start);
                longer.back().push_back(key);
            }
        }
        found = std::move(longer);
    }
    return found;
}

void follow(KeyPath& path, PressedKeyboard keyboard, const ModifierKeys& order, const std::vector<xkb_keycode_t>& keys,
            std::uint16_t modifiers)
{
    for (const auto key : order) {
        keyboard.press(key);
    }
    path.keepsModifiers &= keyboard.modifiers() == modifiers;
    for (const auto key : keys) {
        keyboard.press(key);
        path.switchesLayout |= keyboard.isLayoutSwitched();
        keyboard.release(key);
    }
}

} // namespace

KeyPath keyPath(xkb_keymap* keymap, const std::vector<ModifierKeys>& modifierKeys,
                const std::vector<xkb_keycode_t>& keys, std::uint16_t modifiers)
{
    KeyPath path;
    for (auto& choice : choices(modifierKeys)) {
        std::ranges::sort(choice);
        do {
            for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts(keymap); ++layout) {
                follow(path, PressedKeyboard(keymap, layout), choice, keys, modifiers);
            }
        } while (std::ranges::next_permutation(choice).found);
    }
    return path;
}

} // namespace quelto
