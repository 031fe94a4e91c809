// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/HeldKeys.h"

#include <xcb/xinput.h>

namespace quelto {

KeySet heldKeys(xcb_connection_t* connection)
{
    KeySet held;
    if (const auto reply = replyTo(xcb_query_keymap_reply, connection, xcb_query_keymap(connection))) {
        for (std::size_t key = 0; key < held.size(); ++key) {
            held.set(key, (reply->keys[key / 8] >> (key % 8) & 1) != 0);
        }
    }
    return held;
}

HeldKeys::HeldKeys(const X11Connection& connection)
    : m_connection(connection)
{
    auto* server = connection.get();
    if (!hasExtension(server, xcb_input_id)) {
        return;
    }
    // From 2.1 on, raw events are sent even if another client has grabbed the device.
    const auto version = replyTo(xcb_input_xi_query_version_reply, server, xcb_input_xi_query_version(server, 2, 2));
    if (!version || version->major_version < 2) {
        return;
    }
    m_opcode = xcb_get_extension_data(server, &xcb_input_id)->major_opcode;
    select(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    m_held = heldKeys(server);
}

HeldKeys::~HeldKeys()
{
    if (m_opcode != 0) {
        select(0);
    }
}

void HeldKeys::select(std::uint32_t events)
{
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } const selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1}, .mask = events};
    xcb_input_xi_select_events(m_connection.get(), m_connection.root(), 1, &selection.head);
    xcb_flush(m_connection.get());
}

std::optional<xcb_keycode_t> HeldKeys::pressedKey(const xcb_generic_event_t& event)
{
    const auto* head = static_cast<const xcb_ge_generic_event_t*>(static_cast<const void*>(&event));
    const auto isRawKey = (event.response_type & 0x7f) == XCB_GE_GENERIC && m_opcode != 0 &&
        head->extension == m_opcode &&
        (head->event_type == XCB_INPUT_RAW_KEY_PRESS || head->event_type == XCB_INPUT_RAW_KEY_RELEASE);
    if (!isRawKey) {
        return std::nullopt;
    }
    const auto key = static_cast<const xcb_input_raw_key_press_event_t*>(static_cast<const void*>(&event))->detail;
    if (key >= m_held.size()) {
        return std::nullopt;
    }
    const auto isPress = head->event_type == XCB_INPUT_RAW_KEY_PRESS;
    const auto wasHeld = m_held.test(key);
    m_held.set(key, isPress);
    return isPress && !wasHeld ? std::optional(static_cast<xcb_keycode_t>(key)) : std::nullopt;
}

} // namespace quelto
