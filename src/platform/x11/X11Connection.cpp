// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11Connection.h"

namespace quelto {

std::optional<X11Connection> X11Connection::tryOpen(const QString& displayName)
{
    const auto name = displayName.toUtf8();
    int screenNumber = 0;
    X11Connection opened;
    opened.connection.reset(xcb_connect(name.isEmpty() ? nullptr : name.constData(), &screenNumber));
    if (xcb_connection_has_error(opened.get()) != 0) {
        return std::nullopt;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(opened.get()));
    for (; screens.rem > 1 && screenNumber > 0; --screenNumber) {
        xcb_screen_next(&screens);
    }
    opened.screen = screens.data;
    return opened;
}

bool hasExtension(xcb_connection_t* connection, xcb_extension_t& extension)
{
    const auto* data = xcb_get_extension_data(connection, &extension);
    return data && data->present != 0;
}

} // namespace quelto
