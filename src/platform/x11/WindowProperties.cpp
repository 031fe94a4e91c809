// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/WindowProperties.h"

#include <cstring>

namespace quelto {

namespace {

// In units of four bytes. No name is longer.
constexpr std::uint32_t MaxPropertyLength = 4096;

} // namespace

xcb_atom_t WindowProperties::atom(const char* name) const
{
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const auto reply =
        replyTo(xcb_intern_atom_reply, m_connection.get(), xcb_intern_atom(m_connection.get(), 0, length, name));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

XcbPtr<xcb_get_property_reply_t> WindowProperties::read(xcb_window_t window, const char* property) const
{
    const auto name = atom(property);
    if (name == XCB_ATOM_NONE) {
        return nullptr;
    }
    return replyTo(
        xcb_get_property_reply, m_connection.get(),
        xcb_get_property(m_connection.get(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, MaxPropertyLength));
}

QByteArray WindowProperties::bytes(xcb_window_t window, const char* property) const
{
    const auto reply = read(window, property);
    if (!reply || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get())};
}

QList<std::uint32_t> WindowProperties::values(xcb_window_t window, const char* property) const
{
    const auto reply = read(window, property);
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

} // namespace quelto
