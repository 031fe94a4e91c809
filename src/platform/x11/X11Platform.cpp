// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11Platform.h"

#include "platform/x11/X11Displays.h"
#include "platform/x11/X11FrameSource.h"
#include "platform/x11/X11FrontApplication.h"
#include "platform/x11/X11GlobalKey.h"

namespace quelto {

std::unique_ptr<Displays> makeX11Displays(const QString& displayName)
{
    return std::make_unique<X11Displays>(displayName);
}

std::unique_ptr<FrameSource> makeX11FrameSource(const QString& displayName)
{
    return std::make_unique<X11FrameSource>(displayName);
}

std::unique_ptr<GlobalKey> makeX11GlobalKey(const QString& displayName, X11Session session)
{
    return std::make_unique<X11GlobalKey>(displayName, session);
}

std::unique_ptr<FrontApplication> makeX11FrontApplication(const QString& displayName)
{
    return std::make_unique<X11FrontApplication>(displayName);
}

} // namespace quelto
