// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/ScreenEvents.h"

#include "base/language/T.h"
#include "platform/PlatformError.h"

#include <xcb/randr.h>
#include <xcb/xinput.h>

namespace quelto {

namespace {

xcb_rectangle_t rectangle(const QRect& area)
{
    return {.x = static_cast<std::int16_t>(area.x()),
            .y = static_cast<std::int16_t>(area.y()),
            .width = static_cast<std::uint16_t>(area.width()),
            .height = static_cast<std::uint16_t>(area.height())};
}

std::uint8_t firstEvent(xcb_connection_t* connection, xcb_extension_t& extension)
{
    return xcb_get_extension_data(connection, &extension)->first_event;
}

/// Selects motion events, which arrive even while a game has grabbed the pointer. Returns the extension's major opcode,
/// or 0 without the extension.
std::uint8_t selectPointerMotion(const X11Connection& connection)
{
    auto* server = connection.get();
    if (!hasExtension(server, xcb_input_id)) {
        return 0;
    }
    // From 2.1 on, raw events are sent even if another client has grabbed the device.
    const auto version = replyTo(xcb_input_xi_query_version_reply, server, xcb_input_xi_query_version(server, 2, 2));
    if (!version || version->major_version < 2) {
        return 0;
    }
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } const selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
                      .mask = XCB_INPUT_XI_EVENT_MASK_RAW_MOTION};
    xcb_input_xi_select_events(server, connection.root(), 1, &selection.head);
    return xcb_get_extension_data(server, &xcb_input_id)->major_opcode;
}

CursorOverlay::Shape shapeFrom(const xcb_xfixes_get_cursor_image_reply_t& reply)
{
    const auto* pixels = xcb_xfixes_get_cursor_image_cursor_image(&reply);
    const auto count = xcb_xfixes_get_cursor_image_cursor_image_length(&reply);
    return {.size = {reply.width, reply.height},
            .hotSpot = {reply.xhot, reply.yhot},
            .pixels = std::vector<std::uint32_t>(pixels, pixels + count)};
}

} // namespace

ScreenEvents::ScreenEvents(const X11Connection& connection, bool watchesPointer)
    : m_connection(connection)
    , m_watchesPointer(watchesPointer)
{
    auto* server = connection.get();
    if (!hasExtension(server, xcb_xfixes_id) || !hasExtension(server, xcb_damage_id)) {
        throw PlatformError(T("Ekran sunucusu değişiklikleri bildiremiyor (XDamage eklentisi yok). X sunucusunu "
                              "güncelleyip yeniden deneyin."));
    }
    // Both extensions require the version request first.
    replyTo(xcb_xfixes_query_version_reply, server, xcb_xfixes_query_version(server, 4, 0));
    replyTo(xcb_damage_query_version_reply, server, xcb_damage_query_version(server, 1, 1));
    m_damageEvent = static_cast<std::uint8_t>(firstEvent(server, xcb_damage_id) + XCB_DAMAGE_NOTIFY);

    const auto damage = xcb_generate_id(server);
    xcb_damage_create(server, damage, connection.root(), XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    m_damage = {server, damage};
    const auto changed = xcb_generate_id(server);
    xcb_xfixes_create_region(server, changed, 0, nullptr);
    m_changedRegion = {server, changed};
    const auto area = xcb_generate_id(server);
    xcb_xfixes_create_region(server, area, 0, nullptr);
    m_areaRegion = {server, area};

    if (m_watchesPointer) {
        m_fixesEvent = static_cast<std::uint8_t>(firstEvent(server, xcb_xfixes_id) + XCB_XFIXES_CURSOR_NOTIFY);
        xcb_xfixes_select_cursor_input(server, connection.root(), XCB_XFIXES_CURSOR_NOTIFY_MASK_DISPLAY_CURSOR);
        m_inputOpcode = selectPointerMotion(connection);
    }
    if (hasExtension(server, xcb_randr_id)) {
        m_randrEvent = firstEvent(server, xcb_randr_id);
        xcb_randr_select_input(server, connection.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
    xcb_flush(server);
}

void ScreenEvents::setArea(const QRect& area)
{
    m_area = area;
    const auto part = rectangle(area);
    xcb_xfixes_set_region(m_connection.get(), m_areaRegion.id(), 1, &part);
}

ScreenChanges ScreenEvents::read()
{
    ScreenChanges changes;
    while (const auto event = XcbPtr<xcb_generic_event_t>(xcb_poll_for_event(m_connection.get()))) {
        const auto type = event->response_type & 0x7f;
        if (type == m_damageEvent) {
            changes.hasDamage = true;
        } else if (m_watchesPointer && type == m_fixesEvent) {
            changes.hasNewShape = true;
        } else if (m_randrEvent != 0 &&
                   (type == m_randrEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == m_randrEvent + XCB_RANDR_NOTIFY)) {
            changes.hasNewLayout = true;
        } else if (type == XCB_GE_GENERIC && m_inputOpcode != 0) {
            // Raw motion is the only generic event that was selected.
            changes.hasPointerMoved = true;
        }
    }
    return changes;
}

ScreenEvents::Update ScreenEvents::fetchUpdate(ShapeRequest shapeRequest)
{
    auto* server = m_connection.get();
    // All requests are sent before the first reply is awaited: one round trip.
    xcb_damage_subtract(server, m_damage.id(), XCB_NONE, m_changedRegion.id());
    xcb_xfixes_intersect_region(server, m_changedRegion.id(), m_areaRegion.id(), m_changedRegion.id());
    const auto region = xcb_xfixes_fetch_region(server, m_changedRegion.id());
    xcb_query_pointer_cookie_t pointer{};
    if (m_watchesPointer) {
        pointer = xcb_query_pointer(server, m_connection.root());
    }
    const bool wantsShape = m_watchesPointer && shapeRequest == ShapeRequest::wanted;
    xcb_xfixes_get_cursor_image_cookie_t shape{};
    if (wantsShape) {
        shape = xcb_xfixes_get_cursor_image(server);
    }

    Update update;
    if (const auto reply = replyTo(xcb_xfixes_fetch_region_reply, server, region)) {
        if (reply->extents.width > 0) {
            update.rows = {.first = reply->extents.y - m_area.y(), .count = reply->extents.height};
        }
    }
    if (m_watchesPointer) {
        const auto reply = replyTo(xcb_query_pointer_reply, server, pointer);
        if (reply && reply->same_screen != 0) {
            update.pointerPosition = QPoint(reply->root_x, reply->root_y);
        }
    }
    if (wantsShape) {
        if (const auto reply = replyTo(xcb_xfixes_get_cursor_image_reply, server, shape)) {
            update.cursorShape = shapeFrom(*reply);
        }
    }
    return update;
}

} // namespace quelto
