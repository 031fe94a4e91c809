// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/factory/PlatformFactory.h"

#include "platform/freedesktop/CanberraEventSounds.h"
#include "platform/freedesktop/FreedesktopFileManager.h"
#include "platform/freedesktop/FreedesktopFolderDialog.h"
#include "platform/freedesktop/FreedesktopLoginItem.h"
#include "platform/freedesktop/FreedesktopNotifications.h"
#include "platform/freedesktop/FreedesktopPasteboard.h"
#include "platform/freedesktop/FreedesktopSoundSettings.h"
#include "platform/freedesktop/FreedesktopTrash.h"
#include "platform/pipewire/audio/PipeWireAudioServer.h"
#include "platform/portal/PortalConnection.h"
#include "platform/wayland/WaylandPlatform.h"
#include "platform/x11/X11Platform.h"

namespace quelto {

namespace {

bool isWaylandSession()
{
    return qgetenv("XDG_SESSION_TYPE") == "wayland" || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

} // namespace

Platform makePlatform()
{
    const auto portal = std::make_shared<PortalConnection>(QDBusConnection::sessionBus());
    const bool isWayland = isWaylandSession();
    return {.displays = makeX11Displays(),
            .frames = makeX11FrameSource(),
            .audioServer = makePipeWireAudioServer(),
            .globalKey = makeX11GlobalKey({}, isWayland ? X11Session::underWayland : X11Session::native),
            .frontApplication = isWayland ? makeWaylandFrontApplication() : makeX11FrontApplication(),
            .notifications = std::make_unique<FreedesktopNotifications>(),
            .overlay = isWayland ? makeWaylandOverlay() : nullptr,
            .trash = std::make_unique<FreedesktopTrash>(),
            .eventSounds = std::make_unique<CanberraEventSounds>(),
            .files = std::make_unique<FreedesktopFileManager>(),
            .pasteboard = std::make_unique<FreedesktopPasteboard>(),
            .loginItem = std::make_unique<FreedesktopLoginItem>(),
            .folderDialog = std::make_unique<FreedesktopFolderDialog>(portal),
            .soundSettings = std::make_unique<FreedesktopSoundSettings>()};
}

void notifyBeforeTheEnd(const DesktopNotification& notification)
{
    FreedesktopNotifications::showAndWait(notification);
}

} // namespace quelto
