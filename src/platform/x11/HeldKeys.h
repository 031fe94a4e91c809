// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/KeyboardMap.h"

#include <optional>

namespace quelto {

/// The keys that are down now.
KeySet heldKeys(xcb_connection_t* connection);

/// Watches which keys are held down, whichever program receives them. For a combination whose modifiers the layout
/// turns into something else, so that no grab can match it.
///
/// Other programs still receive the keys. Nothing about them is kept but which are down.
class HeldKeys {
public:
    /// The connection must outlive this object.
    explicit HeldKeys(const X11Connection& connection);
    ~HeldKeys();
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;

    /// The key that the event presses. Nothing for other events, and for a key that was down already.
    std::optional<xcb_keycode_t> pressedKey(const xcb_generic_event_t& event);
    const KeySet& keys() const { return m_held; }

private:
    void select(std::uint32_t events);

    const X11Connection& m_connection;
    /// 0 if the server cannot tell.
    std::uint8_t m_opcode = 0;
    KeySet m_held;
};

} // namespace quelto
