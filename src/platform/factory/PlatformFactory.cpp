// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/factory/PlatformFactory.h"

#include "platform/freedesktop/EventSounds.h"
#include "platform/freedesktop/FreedesktopFileManager.h"
#include "platform/freedesktop/FreedesktopNotices.h"
#include "platform/freedesktop/FreedesktopPasteboard.h"
#include "platform/freedesktop/FreedesktopTrash.h"
#include "platform/pipewire/audio/PipeWireSoundServer.h"
#include "platform/x11/X11Platform.h"

namespace quelto {

Platform makePlatform()
{
    return {.displays = makeX11Displays(),
            .frames = makeX11FrameSource(),
            .sound = makePipeWireSoundServer(),
            .globalKey = makeX11GlobalKey(),
            .frontApplication = makeX11FrontApplication(),
            .notices = std::make_unique<FreedesktopNotices>(),
            .trash = std::make_unique<FreedesktopTrash>(),
            .sounds = std::make_unique<EventSounds>(),
            .files = std::make_unique<FreedesktopFileManager>(),
            .pasteboard = std::make_unique<FreedesktopPasteboard>()};
}

} // namespace quelto
