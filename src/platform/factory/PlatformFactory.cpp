// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/factory/PlatformFactory.h"

#include "platform/pipewire/PipeWireSoundServer.h"
#include "platform/x11/X11Platform.h"

namespace quelto {

Platform makePlatform()
{
    return {.displays = makeX11Displays(),
            .frames = makeX11FrameSource(),
            .sound = makePipeWireSoundServer(),
            .globalKey = makeX11GlobalKey(),
            .frontApplication = makeX11FrontApplication()};
}

} // namespace quelto
