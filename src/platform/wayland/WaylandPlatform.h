// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrontApplication.h"
#include "platform/Overlay.h"

#include <memory>

namespace quelto {

/// The desktop services of a Wayland session for which there is no service on the bus.
///
/// Errors: none. What the compositor does not offer finds no application and shows nothing.
std::unique_ptr<FrontApplication> makeWaylandFrontApplication();
std::unique_ptr<Overlay> makeWaylandOverlay();

} // namespace quelto
