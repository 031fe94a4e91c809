// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <vector>

namespace quelto {

/// What becomes of a combination on its way through the keyboard's layout. A layout may use the same keys to switch to
/// another layout: with Alt+Shift for that, whichever of the two comes second is no modifier any more.
struct KeyPath {
    /// The key is pressed with exactly the wanted modifiers, in whatever order the user presses those.
    bool keepsModifiers = true;
    bool switchesLayout = false;

    bool operator==(const KeyPath&) const = default;
};

/// The keys of one modifier, such as left and right Shift.
using ModifierKeys = std::vector<xkb_keycode_t>;

/// Presses the modifiers in every order and then each of the keys, in every layout of the keyboard. The modifiers are
/// the server's bits.
KeyPath keyPath(xkb_keymap* keymap, const std::vector<ModifierKeys>& modifierKeys,
                const std::vector<xkb_keycode_t>& keys, std::uint16_t modifiers);

} // namespace quelto
