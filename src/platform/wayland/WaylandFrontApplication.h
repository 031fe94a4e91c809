// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrontApplication.h"

#include <memory>
#include <mutex>
#include <thread>

namespace quelto {

/// The best way of this session to follow the active window, in this order: a script in KWin; the compositor's list of
/// windows; the active window of Xwayland, which knows X11 programs only, as most games are. Null if there is none.
///
/// Waits for the bus, the compositor and the X server, each two seconds at most.
std::unique_ptr<FrontApplication> chooseFrontApplication();

/// Follows the active window of a Wayland session. Chooses the way to do so in the background; until then no
/// application is known.
class WaylandFrontApplication final : public FrontApplication {
public:
    WaylandFrontApplication();
    ~WaylandFrontApplication() override;
    WaylandFrontApplication(const WaylandFrontApplication&) = delete;
    WaylandFrontApplication& operator=(const WaylandFrontApplication&) = delete;

    std::optional<FrontApplicationInfo> current() const override;

private:
    mutable std::mutex m_lock;
    std::unique_ptr<FrontApplication> m_chosen;
    std::thread m_choosing;
};

} // namespace quelto
