// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/scene/SceneOptions.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>

namespace quelto {

struct XcbDisconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// A window without a frame that shows the counter, a moving picture and the flash.
///
/// Everything but the counter and the flash lies on the X server already and is only copied, so that drawing costs next
/// to nothing beside what is measured.
/// Thread: one.
/// Errors: std::runtime_error where there is no X server, or once it goes away.
class SceneWindow {
public:
    SceneWindow(SceneMotion motion, const std::optional<WindowPlace>& place);

    /// Waits until the window manager has shown the window in its place.
    void waitUntilShown();
    /// Returns when the X server has drawn it.
    void draw(std::uint64_t frame, bool isFlashing);

private:
    void create(const std::optional<WindowPlace>& place);
    void coverEverything();
    void dropFrame();
    void makeBackground();
    void copyBackground(int x, int y, int shift);
    void drawPicture(std::uint64_t frame);
    void drawCounter(std::uint64_t frame);
    void handleEvents();
    void waitForServer();
    xcb_gcontext_t makeColour(std::uint32_t colour);
    xcb_atom_t atom(const char* name);

    std::unique_ptr<xcb_connection_t, XcbDisconnect> m_connection;
    SceneMotion m_motion;
    bool m_isFullScreen;
    const xcb_screen_t* m_screen = nullptr;
    xcb_window_t m_window = 0;
    xcb_pixmap_t m_background = 0;
    xcb_pixmap_t m_strip = 0;
    xcb_gcontext_t m_black = 0;
    xcb_gcontext_t m_white = 0;
    int m_backgroundWidth = 0;
    int m_backgroundHeight = 0;
    int m_width = 0;
    int m_height = 0;
    bool m_isShown = false;
};

} // namespace quelto
