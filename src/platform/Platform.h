// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"
#include "platform/DesktopNotifications.h"
#include "platform/Displays.h"
#include "platform/EventSounds.h"
#include "platform/FileManager.h"
#include "platform/FolderDialog.h"
#include "platform/FrameSource.h"
#include "platform/FrontApplication.h"
#include "platform/GlobalKey.h"
#include "platform/LoginItem.h"
#include "platform/Overlay.h"
#include "platform/Pasteboard.h"
#include "platform/SoundSettings.h"
#include "platform/Trash.h"

#include <memory>

namespace quelto {

/// The desktop services of this session. makePlatform() chooses a back end for each.
struct Platform {
    std::unique_ptr<Displays> displays;
    std::unique_ptr<FrameSource> frames;
    std::unique_ptr<AudioServer> audioServer;
    std::unique_ptr<GlobalKey> globalKey;
    std::unique_ptr<FrontApplication> frontApplication;
    std::unique_ptr<DesktopNotifications> notifications;
    /// Null in an X11 session, where a window can be above all others.
    std::unique_ptr<Overlay> overlay;
    std::unique_ptr<Trash> trash;
    std::unique_ptr<EventSounds> eventSounds;
    std::unique_ptr<FileManager> files;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<FolderDialog> folderDialog;
    std::unique_ptr<SoundSettings> soundSettings;
};

} // namespace quelto
