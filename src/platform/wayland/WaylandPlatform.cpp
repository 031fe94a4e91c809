// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/WaylandPlatform.h"

#include "platform/wayland/LayerOverlay.h"
#include "platform/wayland/WaylandFrontApplication.h"

namespace quelto {

std::unique_ptr<FrontApplication> makeWaylandFrontApplication()
{
    return std::make_unique<WaylandFrontApplication>();
}

std::unique_ptr<Overlay> makeWaylandOverlay()
{
    return std::make_unique<LayerOverlay>();
}

} // namespace quelto
