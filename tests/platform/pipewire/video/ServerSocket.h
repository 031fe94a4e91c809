// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"

#include <QtGlobal>

#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>

namespace quelto::pipewire {

/// A connection to the desktop's PipeWire server. None if there is no server at the moment.
inline FileDescriptor connectToServer()
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray path = qgetenv("XDG_RUNTIME_DIR") + "/pipewire-0";
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) {
        return FileDescriptor();
    }
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    FileDescriptor server(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const auto* generic = reinterpret_cast<const sockaddr*>(&address);
    return connect(server.get(), generic, sizeof address) == 0 ? std::move(server) : FileDescriptor();
}

} // namespace quelto::pipewire
