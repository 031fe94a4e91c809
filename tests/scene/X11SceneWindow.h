// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/scene/SceneWindow.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>

namespace quelto {

struct XcbDisconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// The scene's window on the X server of DISPLAY.
///
/// The X server holds everything but the counter and the flash and only copies it, so that drawing needs little CPU
/// time compared with the recording.
class X11SceneWindow final : public SceneWindow {
public:
    X11SceneWindow(SceneMotion motion, const std::optional<WindowPlace>& place);

    void waitUntilShown() override;
    /// Returns after the X server has drawn the frame.
    void draw(std::uint64_t frame, bool isFlashing) override;
    void handleEvents() override;

private:
    void create(const std::optional<WindowPlace>& place);
    void coverEverything();
    void dropFrame();
    void makeBackground();
    void copyBackground(int x, int y, int shift);
    void drawPicture(std::uint64_t frame);
    void drawCounter(std::uint64_t frame);
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
