// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/x11/CursorOverlay.h"
#include "platform/x11/ScreenImage.h"
#include "platform/x11/X11Connection.h"

#include <xcb/damage.h>
#include <xcb/xfixes.h>

#include <optional>

namespace quelto {

/// What the server has reported since it was last asked.
struct ScreenChanges {
    bool hasDamage = false;
    bool pointerMoved = false;
    bool shapeChanged = false;
    bool layoutChanged = false;
};

/// Watches the X screen for changes, with as few messages as the server allows: one when anything was drawn, and no
/// further one until that has been taken.
///
/// Thread: one at a time.
class ScreenEvents {
public:
    /// Errors: PlatformError where the server cannot report changes.
    ScreenEvents(const X11Connection& connection, bool watchesPointer);

    void setArea(const QRect& area);

    /// False where the server is too old to tell that the pointer moved; its place must then be asked for.
    bool reportsMotion() const noexcept { return m_inputOpcode != 0; }

    /// Everything that has arrived by now; does not wait.
    ScreenChanges read();

    struct Changes {
        /// Rows of the area that were drawn on.
        RowRange rows;
        /// Where the pointer is on the X screen; nothing when it is on another screen, or not watched.
        std::optional<QPoint> pointer;
        /// Where it was asked for.
        std::optional<CursorOverlay::Shape> shape;
    };
    enum class ShapeRequest { none, wanted };
    /// What has changed, which starts the watch anew.
    Changes take(ShapeRequest shapeWish);

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
