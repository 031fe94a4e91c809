// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/CursorOverlay.h"
#include "platform/x11/ScreenImage.h"
#include "platform/x11/X11Connection.h"

#include <xcb/damage.h>
#include <xcb/xfixes.h>

#include <optional>

namespace quelto {

/// What the server has reported since the last ScreenEvents::read().
struct ScreenChanges {
    bool hasDamage = false;
    bool hasPointerMoved = false;
    bool hasNewShape = false;
    bool hasNewLayout = false;
};

/// Watches the X screen for changes.
///
/// The server sends one event when anything was drawn and no further one until fetchUpdate() resets the damage, which
/// keeps the number of events low.
///
/// Thread: one at a time.
class ScreenEvents {
public:
    /// Errors: PlatformError if the server cannot report changes.
    ScreenEvents(const X11Connection& connection, bool watchesPointer);

    void setArea(const QRect& area);

    /// False if the server is too old to report pointer motion; the position must then be polled.
    bool reportsMotion() const noexcept { return m_inputOpcode != 0; }

    /// Processes all events that have arrived, without waiting.
    ScreenChanges read();

    struct Update {
        /// The rows of the area that were drawn on.
        RowRange rows;
        /// In X screen coordinates. Nothing if the pointer is on another screen or not watched.
        std::optional<QPoint> pointerPosition;
        /// Only if it was requested.
        std::optional<CursorOverlay::Shape> cursorShape;
    };
    enum class ShapeRequest { none, wanted };
    /// Requests what has changed and resets the damage.
    Update fetchUpdate(ShapeRequest shapeRequest);

private:
    const X11Connection& m_connection;
    bool m_watchesPointer;
    QRect m_area;
    std::uint8_t m_damageEvent = 0;
    std::uint8_t m_fixesEvent = 0;
    std::uint8_t m_randrEvent = 0;
    std::uint8_t m_inputOpcode = 0;
    XcbResource<xcb_damage_destroy> m_damage;
    XcbResource<xcb_xfixes_destroy_region> m_areaRegion;
    XcbResource<xcb_xfixes_destroy_region> m_changedRegion;
};

} // namespace quelto
