// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/SceneWindow.h"

#include "tests/scene/WaylandSceneWindow.h"
#include "tests/scene/X11SceneWindow.h"

namespace quelto {

std::unique_ptr<SceneWindow> SceneWindow::create(const SceneOptions& options)
{
    if (options.server == SceneServer::Wayland)
        return std::make_unique<WaylandSceneWindow>(options.motion, options.place);
    return std::make_unique<X11SceneWindow>(options.motion, options.place);
}

} // namespace quelto
