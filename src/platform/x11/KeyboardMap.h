// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/KeyPath.h"
#include "platform/x11/X11Connection.h"

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <bitset>
#include <optional>
#include <vector>

namespace quelto {

/// A set of the server's key codes.
using KeySet = std::bitset<256>;

/// Translates a stored shortcut to the X server's key codes and modifier bits for the present keyboard.
///
/// Keys are found by their physical position, independent of the layout. Modifier bits come from the server's modifier
/// map, not from their usual values.
class KeyboardMap {
public:
    /// Nothing if the server does not describe its keyboard.
    static std::optional<KeyboardMap> tryRead(xcb_connection_t* connection);

    /// All keys at the position. Empty if the keyboard has none there.
    std::vector<xcb_keycode_t> keyCodes(std::uint32_t storedCode) const;
    /// The server's bits for the stored modifiers. Nothing if the keyboard lacks one of them.
    std::optional<std::uint16_t> modifiers(std::uint32_t storedModifiers) const;
    /// What the layout makes of a press. The keyboard must have the key and the modifiers.
    KeyPath path(std::uint32_t storedCode, std::uint32_t storedModifiers) const;
    /// The stored bits of the modifiers among the keys.
    std::uint32_t storedModifiers(const KeySet& keys) const;
    /// What the key types without modifiers in the present layout, with Num Lock. Empty if that cannot be shown.
    QString characters(xcb_connection_t* connection, std::uint32_t storedCode) const;
    /// Every combination of Caps Lock, Num Lock and Scroll Lock, including none.
    std::vector<std::uint16_t> lockStates() const;

private:
    struct Unref {
        void operator()(xkb_context* context) const noexcept { xkb_context_unref(context); }
        void operator()(xkb_keymap* keymap) const noexcept { xkb_keymap_unref(keymap); }
    };

    void readModifiers(xcb_connection_t* connection);
    void readModifierKey(xcb_keycode_t key, std::uint16_t bit);

    std::unique_ptr<xkb_context, Unref> m_context;
    std::unique_ptr<xkb_keymap, Unref> m_keymap;
    std::uint16_t m_alt = 0;
    std::uint16_t m_super = 0;
    std::uint16_t m_locks = XCB_MOD_MASK_LOCK;
    std::uint16_t m_numLock = 0;
    /// The stored bit of each modifier key, by key code. Keys that send a modifier only in combination do not count.
    std::array<std::uint32_t, 256> m_modifierOfKey{};
};

} // namespace quelto
