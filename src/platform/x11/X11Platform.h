// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Displays.h"
#include "platform/FrameSource.h"
#include "platform/FrontApplication.h"
#include "platform/GlobalKey.h"

#include <memory>

namespace quelto {

enum class X11Session {
    native,
    /// The server shows its windows on a Wayland desktop, which gives it only the keys of these windows.
    underWayland,
};

/// The desktop services of an X server. An empty display name means $DISPLAY.
///
/// Errors: none if there is no server; the lists are empty and the key never fires. Only FrameSource::start() throws.
std::unique_ptr<Displays> makeX11Displays(const QString& displayName = {});
std::unique_ptr<FrameSource> makeX11FrameSource(const QString& displayName = {});
std::unique_ptr<GlobalKey> makeX11GlobalKey(const QString& displayName = {}, X11Session session = X11Session::native);
std::unique_ptr<FrontApplication> makeX11FrontApplication(const QString& displayName = {});

} // namespace quelto
