// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/factory/PlatformFactory.h"

#include "platform/factory/NullPlatform.h"
#include "platform/factory/SessionChoice.h"
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
#include "platform/portal/PortalDisplays.h"
#include "platform/portal/PortalFrameSource.h"
#include "platform/portal/PortalGlobalKey.h"
#include "platform/wayland/WaylandPlatform.h"
#include "platform/x11/X11Platform.h"

namespace quelto {

namespace {

void capture(Platform& platform, const SessionChoice& choice, const std::shared_ptr<PortalConnection>& portal,
             X11Session session)
{
    switch (choice.screen) {
    case ScreenBackEnd::x11:
        platform.displays = makeX11Displays();
        platform.frames = makeX11FrameSource();
        platform.globalKey = makeX11GlobalKey({}, session);
        return;
    case ScreenBackEnd::portal: {
        const auto screen = std::make_shared<PortalScreen>();
        platform.displays = std::make_unique<PortalDisplays>(portal, screen);
        platform.frames = std::make_unique<PortalFrameSource>(portal, screen);
        platform.globalKey = std::make_unique<PortalGlobalKey>(portal);
        return;
    }
    case ScreenBackEnd::none:
        platform.displays = makeNullDisplays();
        platform.frames = makeNullFrameSource(choice.problem);
        platform.globalKey = makeX11GlobalKey({}, session);
        return;
    }
}

} // namespace

Platform makePlatform()
{
    const auto facts = SessionFacts::present();
    const auto portal = std::make_shared<PortalConnection>(PortalConnection::openBus());
    Platform platform{.displays = {},
                      .frames = {},
                      .audioServer = makePipeWireAudioServer(),
                      .globalKey = {},
                      .frontApplication = facts.isWayland ? makeWaylandFrontApplication() : makeX11FrontApplication(),
                      .notifications = std::make_unique<FreedesktopNotifications>(),
                      .overlay = facts.isWayland ? makeWaylandOverlay() : nullptr,
                      .trash = std::make_unique<FreedesktopTrash>(),
                      .eventSounds = std::make_unique<CanberraEventSounds>(),
                      .files = std::make_unique<FreedesktopFileManager>(),
                      .pasteboard = std::make_unique<FreedesktopPasteboard>(),
                      .loginItem = std::make_unique<FreedesktopLoginItem>(),
                      .folderDialog = std::make_unique<FreedesktopFolderDialog>(portal),
                      .soundSettings = std::make_unique<FreedesktopSoundSettings>()};
    capture(platform, chooseSession(facts), portal, facts.isWayland ? X11Session::underWayland : X11Session::native);
    return platform;
}

void notifyBeforeTheEnd(const DesktopNotification& notification)
{
    FreedesktopNotifications::showAndWait(notification);
}

} // namespace quelto
