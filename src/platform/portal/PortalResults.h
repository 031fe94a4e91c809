// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <optional>

// Reads what the portal returns. A value of another type than expected counts as absent, and texts are limited, because
// the programs behind the portal differ from desktop to desktop.
namespace quelto {

/// The stream of one screen.
struct ScreenCastNode {
    /// PipeWire's id of the node.
    std::uint32_t id = 0;
};

/// A global shortcut as it goes over the bus. Ids are those of this program.
struct PortalShortcutEntry {
    QString id;
    QVariantMap properties;
};
using PortalShortcutList = QList<PortalShortcutEntry>;

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcutEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcutEntry& entry);

/// The list as a value that QtDBus can send.
QVariant toDBus(const PortalShortcutList& shortcuts);

/// The path of a new session; empty without a valid one.
QString sessionHandle(const QVariantMap& results);
/// Nothing if the user shared no screen.
std::optional<ScreenCastNode> firstStream(const QVariantMap& results);
/// Empty if there is none.
QString restoreToken(const QVariantMap& results);
/// The keys of the shortcut with the id, as the desktop writes them for users. Empty if the desktop does not tell,
/// nothing if the value, a list of shortcuts, lacks the id.
std::optional<QString> triggerOf(const QVariant& shortcuts, const QString& id);

} // namespace quelto

Q_DECLARE_METATYPE(quelto::PortalShortcutEntry)
