// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/WaylandFrontApplication.h"

#include "platform/wayland/BusConnection.h"
#include "platform/wayland/KWinActiveWindow.h"
#include "platform/wayland/KWinFrontApplication.h"
#include "platform/wayland/ToplevelFrontApplication.h"
#include "platform/x11/X11Platform.h"

#include <pthread.h>

namespace quelto {

std::unique_ptr<FrontApplication> chooseFrontApplication()
{
    if (KWinActiveWindow::isAvailable(BusConnection().get())) {
        return std::make_unique<KWinFrontApplication>();
    }
    if (auto toplevels = ToplevelFrontApplication::tryMake()) {
        return toplevels;
    }
    if (!qEnvironmentVariableIsEmpty("DISPLAY")) {
        auto x11 = makeX11FrontApplication();
        // The first call waits for the X server. Later ones answer from memory.
        x11->current();
        return x11;
    }
    return nullptr;
}

WaylandFrontApplication::WaylandFrontApplication()
    : m_choosing([this] {
        pthread_setname_np(pthread_self(), "quelto.front");
        auto chosen = chooseFrontApplication();
        const std::scoped_lock guard(m_lock);
        m_chosen = std::move(chosen);
    })
{
}

WaylandFrontApplication::~WaylandFrontApplication()
{
    m_choosing.join();
}

std::optional<FrontApplicationInfo> WaylandFrontApplication::current() const
{
    const std::scoped_lock guard(m_lock);
    return m_chosen ? m_chosen->current() : std::nullopt;
}

} // namespace quelto
