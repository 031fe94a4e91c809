// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/KWinFrontApplication.h"

#include "platform/wayland/BusConnection.h"
#include "platform/wayland/KWinActiveWindow.h"

namespace quelto {

class KWinFrontApplication::Follower {
public:
    explicit Follower(CurrentApplication& current)
        : m_window(m_bus.get(), [this, &current](const std::optional<WindowIdentity>& window) {
            current.set(window ? describeApplication(*window, m_applications) : std::nullopt);
        })
    {
    }

private:
    BusConnection m_bus;
    DesktopEntries m_applications;
    KWinActiveWindow m_window;
};

KWinFrontApplication::KWinFrontApplication()
    : m_queue(QStringLiteral("quelto.front"))
{
    m_queue.post([this] { m_follower = std::make_unique<Follower>(m_current); });
}

KWinFrontApplication::~KWinFrontApplication()
{
    m_queue.sync([this] { m_follower.reset(); });
}

} // namespace quelto
