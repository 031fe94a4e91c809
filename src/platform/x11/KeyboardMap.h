// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/X11Connection.h"

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <optional>
#include <vector>

namespace quelto {

/// Where the server's present keyboard has the keys of a stored shortcut.
///
/// Keys are found by place, not by what the layout prints on them, and modifiers by what the server's modifier map
/// says, not by the bits they usually have.
class KeyboardMap {
public:
    /// Nothing when the server tells nothing about its keyboard.
    static std::optional<KeyboardMap> tryRead(xcb_connection_t* connection);

    /// All keys at that place; empty when the keyboard has none there.
    std::vector<xcb_keycode_t> keyCodes(std::uint32_t storedCode) const;
    /// The server's bits for the stored ones, or nothing when the keyboard lacks one of the modifiers.
    std::optional<std::uint16_t> modifiers(std::uint32_t storedModifiers) const;
    /// Every state in which Caps Lock, Num Lock and Scroll Lock can be, alone and together, the empty one included.
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
};

} // namespace quelto
