// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>

namespace quelto {

/// A connection to the session bus of its own, closed at the end. Objects on it receive their calls on their thread.
///
/// Errors: none. Without a bus it is not connected.
class BusConnection {
public:
    BusConnection();
    ~BusConnection();
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    const QDBusConnection& get() const noexcept { return m_bus; }

private:
    QDBusConnection m_bus;
};

} // namespace quelto
