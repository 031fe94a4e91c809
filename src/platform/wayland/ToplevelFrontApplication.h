// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/applications/CurrentApplication.h"
#include "platform/wayland/ToplevelList.h"
#include "platform/wayland/WaylandConnection.h"

#include <thread>

namespace quelto {

/// The application of the window that is active in the compositor's list of windows. Follows it on a thread of its own,
/// which also reads desktop entries.
class ToplevelFrontApplication final : public FrontApplication {
public:
    /// Null if the compositor offers no list of windows, or does not answer within two seconds. An empty name means
    /// $WAYLAND_DISPLAY.
    static std::unique_ptr<ToplevelFrontApplication> tryMake(const QString& displayName = {});
    ~ToplevelFrontApplication() override;
    ToplevelFrontApplication(const ToplevelFrontApplication&) = delete;
    ToplevelFrontApplication& operator=(const ToplevelFrontApplication&) = delete;

    std::optional<FrontApplicationInfo> current() const override { return m_current.get(); }

private:
    ToplevelFrontApplication(std::unique_ptr<WaylandConnection> connection, std::unique_ptr<ToplevelList> windows);
    void follow();

    CurrentApplication m_current;
    std::unique_ptr<WaylandConnection> m_connection;
    std::unique_ptr<ToplevelList> m_windows;
    int m_stopDescriptor;
    std::thread m_thread;
};

} // namespace quelto
