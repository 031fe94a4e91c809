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

/// A window without decorations that shows the counter, a moving picture and the flash.
///
/// The X server holds everything but the counter and the flash and only copies it, so that drawing needs little CPU
/// time compared with the recording. Thread: one. Errors: std::runtime_error if there is no X server or its connection
/// breaks.
class SceneWindow {
public:
    SceneWindow(SceneMotion motion, const std::optional<WindowPlace>& place);

    /// Waits until the window is visible at its position.
    void waitUntilShown();
    /// Returns after the X server has drawn the frame.
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
