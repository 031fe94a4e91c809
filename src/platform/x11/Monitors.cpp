// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/Monitors.h"

#include <xcb/randr.h>

namespace quelto {

namespace {

/// FNV-1a, so the id of a name is the same in every session. The top bit, which XIDs never set, avoids collisions with
/// outputs.
std::uint32_t idFromName(const QString& name)
{
    std::uint32_t hash = 2166136261;
    for (const char byte : name.toUtf8()) {
        hash = (hash ^ static_cast<std::uint8_t>(byte)) * 16777619;
    }
    return hash | 0x80000000;
}

QString atomName(xcb_connection_t* connection, xcb_atom_t atom)
{
    const auto reply = replyTo(xcb_get_atom_name_reply, connection, xcb_get_atom_name(connection, atom));
    return reply ? QString::fromUtf8(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                 : QString();
}

/// The present area. The connection's set-up data has the size at the time of connecting.
QRect screenArea(const X11Connection& connection)
{
    const auto reply =
        replyTo(xcb_get_geometry_reply, connection.get(), xcb_get_geometry(connection.get(), connection.root()));
    return reply ? QRect(0, 0, reply->width, reply->height) : QRect();
}

bool hasMonitorList(xcb_connection_t* connection)
{
    if (!hasExtension(connection, xcb_randr_id)) {
        return false;
    }
    const auto version = replyTo(xcb_randr_query_version_reply, connection, xcb_randr_query_version(connection, 1, 5));
    return version && (version->major_version > 1 || version->minor_version >= 5);
}

QList<Monitor> listedMonitors(const X11Connection& connection, const QRect& screen)
{
    QList<Monitor> result;
    auto* server = connection.get();
    const auto reply =
        replyTo(xcb_randr_get_monitors_reply, server, xcb_randr_get_monitors(server, connection.root(), 1));
    if (!reply) {
        return result;
    }
    for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each)) {
        const auto& monitor = *each.data;
        const auto area = QRect(monitor.x, monitor.y, monitor.width, monitor.height).intersected(screen);
        if (area.isEmpty()) {
            continue;
        }
        const auto name = atomName(server, monitor.name);
        const auto id = xcb_randr_monitor_info_outputs_length(&monitor) > 0
            ? xcb_randr_monitor_info_outputs(&monitor)[0]
            : std::uint32_t{0};
        const bool isTaken = std::ranges::any_of(result, [id](const Monitor& other) { return other.info.id == id; });
        result.append({.info = {.id = id == 0 || isTaken ? idFromName(name) : id,
                                .name = name,
                                .pixelSize = area.size(),
                                .isMain = monitor.primary != 0},
                       .area = area});
    }
    return result;
}

} // namespace

QList<Monitor> readMonitors(const X11Connection& connection)
{
    const auto screen = screenArea(connection);
    if (screen.isEmpty()) {
        return {};
    }
    QList<Monitor> monitors;
    if (hasMonitorList(connection.get())) {
        monitors = listedMonitors(connection, screen);
    }
    if (monitors.isEmpty()) {
        const auto name = QStringLiteral("X11");
        monitors.append({.info = {.id = idFromName(name), .name = name, .pixelSize = screen.size()}, .area = screen});
    }
    if (std::ranges::none_of(monitors, [](const Monitor& monitor) { return monitor.info.isMain; })) {
        monitors.first().info.isMain = true;
    }
    return monitors;
}

} // namespace quelto
