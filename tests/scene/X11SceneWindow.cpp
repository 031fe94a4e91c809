// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/X11SceneWindow.h"

#include "tests/scene/CounterStrip.h"
#include "tests/scene/Texture.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace quelto {

namespace {

template <typename Reply> using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply> Owned<Reply> own(Reply* reply)
{
    return {reply, &std::free};
}

xcb_rectangle_t rectangle(int x, int y, int width, int height)
{
    return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
            static_cast<std::uint16_t>(height)};
}

} // namespace

X11SceneWindow::X11SceneWindow(SceneMotion motion, const std::optional<WindowPlace>& place)
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_motion(motion)
    , m_isFullScreen(!place)
{
    if (xcb_connection_has_error(m_connection.get()) != 0)
        throw std::runtime_error("no X server");
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    m_black = makeColour(0x000000);
    m_white = makeColour(0xffffff);
    create(place);
    makeBackground();
}

xcb_gcontext_t X11SceneWindow::makeColour(std::uint32_t colour)
{
    const xcb_gcontext_t context = xcb_generate_id(m_connection.get());
    const std::array<std::uint32_t, 2> values{colour, 0};
    xcb_create_gc(m_connection.get(), context, m_screen->root, XCB_GC_FOREGROUND | XCB_GC_GRAPHICS_EXPOSURES,
                  values.data());
    return context;
}

xcb_atom_t X11SceneWindow::atom(const char* name)
{
    const auto cookie = xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const auto reply = own(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void X11SceneWindow::coverEverything()
{
    // Always on top, because the recorder's window opens later and would cover the scene.
    const std::array states{atom("_NET_WM_STATE_FULLSCREEN"), atom("_NET_WM_STATE_ABOVE")};
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                        states.size(), states.data());
}

void X11SceneWindow::dropFrame()
{
    // Flags: the field for decorations is valid; no decorations.
    const std::array<std::uint32_t, 5> hints{2, 0, 0, 0, 0};
    const xcb_atom_t name = atom("_MOTIF_WM_HINTS");
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, name, name, 32, hints.size(),
                        hints.data());
}

void X11SceneWindow::create(const std::optional<WindowPlace>& place)
{
    m_width = place ? place->width : m_screen->width_in_pixels;
    m_height = place ? place->height : m_screen->height_in_pixels;
    m_window = xcb_generate_id(m_connection.get());
    const std::array<std::uint32_t, 1> events{XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_EXPOSURE};
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window, m_screen->root,
                      static_cast<std::int16_t>(place ? place->x : 0), static_cast<std::int16_t>(place ? place->y : 0),
                      static_cast<std::uint16_t>(m_width), static_cast<std::uint16_t>(m_height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, m_screen->root_visual, XCB_CW_EVENT_MASK, events.data());
    constexpr char Name[] = "Quelto scene";
    constexpr char Class[] = "quelto-scene\0Quelto scene";
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        sizeof Name - 1, Name);
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        sizeof Class, Class);
    dropFrame();
    if (m_isFullScreen) {
        coverEverything();
    } else {
        // Flags: the user chose position and size, so the window manager keeps them.
        const std::array<std::uint32_t, 18> hints{
            1U | 2U, static_cast<std::uint32_t>(place->x), static_cast<std::uint32_t>(place->y),
            static_cast<std::uint32_t>(m_width), static_cast<std::uint32_t>(m_height)};
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
                            XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    }
    xcb_map_window(m_connection.get(), m_window);
    xcb_flush(m_connection.get());
}

void X11SceneWindow::makeBackground()
{
    const std::vector<std::uint32_t> pixels = Texture::make();
    const xcb_pixmap_t tile = xcb_generate_id(m_connection.get());
    xcb_create_pixmap(m_connection.get(), m_screen->root_depth, tile, m_screen->root, Texture::Size, Texture::Size);
    // In bands that are smaller than the largest request every server accepts.
    constexpr int BandRows = 64;
    for (int row = 0; row < Texture::Size; row += BandRows) {
        xcb_put_image(m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, tile, m_black, Texture::Size, BandRows, 0,
                      static_cast<std::int16_t>(row), 0, m_screen->root_depth,
                      BandRows * Texture::Size * sizeof(std::uint32_t),
                      reinterpret_cast<const std::uint8_t*>(pixels.data() + row * Texture::Size));
    }
    // Larger than the window by one tile in both directions, so that each shift needs a single copy.
    m_backgroundWidth = m_width + Texture::Size;
    m_backgroundHeight = m_height + Texture::Size;
    m_background = xcb_generate_id(m_connection.get());
    xcb_create_pixmap(m_connection.get(), m_screen->root_depth, m_background, m_screen->root,
                      static_cast<std::uint16_t>(m_backgroundWidth), static_cast<std::uint16_t>(m_backgroundHeight));
    m_strip = xcb_generate_id(m_connection.get());
    xcb_create_pixmap(m_connection.get(), m_screen->root_depth, m_strip, m_screen->root,
                      static_cast<std::uint16_t>(m_width), static_cast<std::uint16_t>(CounterStrip::height(m_height)));

    const xcb_gcontext_t tiling = xcb_generate_id(m_connection.get());
    const std::array<std::uint32_t, 2> values{XCB_FILL_STYLE_TILED, tile};
    xcb_create_gc(m_connection.get(), tiling, m_screen->root, XCB_GC_FILL_STYLE | XCB_GC_TILE, values.data());
    const xcb_rectangle_t everything = rectangle(0, 0, m_backgroundWidth, m_backgroundHeight);
    xcb_poly_fill_rectangle(m_connection.get(), m_background, tiling, 1, &everything);
    xcb_free_gc(m_connection.get(), tiling);
    xcb_free_pixmap(m_connection.get(), tile);
}

void X11SceneWindow::waitUntilShown()
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    handleEvents();
    // Without a window manager the window is in position at once. With one, wait until its events end.
    while (!m_isShown && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        handleEvents();
    }
    if (!m_isShown)
        throw std::runtime_error("the window is not shown");
}

void X11SceneWindow::handleEvents()
{
    while (const auto event = own(xcb_poll_for_event(m_connection.get()))) {
        const int type = event->response_type & 0x7f;
        if (type == XCB_EXPOSE) {
            m_isShown = true;
        } else if (type == XCB_CONFIGURE_NOTIFY) {
            const auto* change = reinterpret_cast<const xcb_configure_notify_event_t*>(event.get());
            m_width = std::min<int>(change->width, m_backgroundWidth - Texture::Size);
            m_height = std::min<int>(change->height, m_backgroundHeight - Texture::Size);
        }
    }
    if (xcb_connection_has_error(m_connection.get()) != 0)
        throw std::runtime_error("the X server went away");
}

void X11SceneWindow::copyBackground(int x, int y, int shift)
{
    const int top = CounterStrip::height(m_height);
    xcb_copy_area(m_connection.get(), m_background, m_window, m_black,
                  static_cast<std::int16_t>(x + shift % Texture::Size),
                  static_cast<std::int16_t>(y + shift / 2 % Texture::Size), static_cast<std::int16_t>(x),
                  static_cast<std::int16_t>(y + top), static_cast<std::uint16_t>(m_width - x),
                  static_cast<std::uint16_t>(m_height - top - y));
}

void X11SceneWindow::drawPicture(std::uint64_t frame)
{
    const int top = CounterStrip::height(m_height);
    // A few bits of the counter are enough for a shift that repeats.
    const int step = static_cast<int>(frame % (2 * Texture::Size));
    if (m_motion == SceneMotion::High) {
        copyBackground(0, 0, step * 6);
        return;
    }
    if (frame == 0)
        copyBackground(0, 0, 0);
    // A sixteenth of the picture moves, in the lower left.
    xcb_copy_area(
        m_connection.get(), m_background, m_window, m_black, static_cast<std::int16_t>(step * 6 % Texture::Size),
        static_cast<std::int16_t>(step * 3 % Texture::Size), 0, static_cast<std::int16_t>(m_height * 3 / 4 + top / 4),
        static_cast<std::uint16_t>(m_width / 4), static_cast<std::uint16_t>(m_height / 4 - top / 4));
}

void X11SceneWindow::drawCounter(std::uint64_t frame)
{
    const int height = CounterStrip::height(m_height);
    std::vector<xcb_rectangle_t> white;
    for (const CounterStrip::Cell& cell : CounterStrip::cells(frame, m_width)) {
        if (cell.isWhite)
            white.push_back(rectangle(cell.left, 0, cell.width, height));
    }
    // Draw off-screen first, so that a recorder never sees a part of the counter.
    const xcb_rectangle_t strip = rectangle(0, 0, m_width, height);
    xcb_poly_fill_rectangle(m_connection.get(), m_strip, m_black, 1, &strip);
    xcb_poly_fill_rectangle(m_connection.get(), m_strip, m_white, static_cast<std::uint32_t>(white.size()),
                            white.data());
    xcb_copy_area(m_connection.get(), m_strip, m_window, m_black, 0, 0, 0, 0, static_cast<std::uint16_t>(m_width),
                  static_cast<std::uint16_t>(height));
}

void X11SceneWindow::draw(std::uint64_t frame, bool isFlashing)
{
    handleEvents();
    // Grab the server, so that the whole frame appears at once, as in a game.
    xcb_grab_server(m_connection.get());
    drawPicture(frame);
    const xcb_rectangle_t flash = rectangle(m_width / 4, m_height / 4, m_width / 2, m_height / 2);
    if (isFlashing)
        xcb_poly_fill_rectangle(m_connection.get(), m_window, m_white, 1, &flash);
    else if (m_motion != SceneMotion::High)
        xcb_copy_area(m_connection.get(), m_background, m_window, m_black, flash.x, flash.y, flash.x, flash.y,
                      flash.width, flash.height);
    drawCounter(frame);
    xcb_ungrab_server(m_connection.get());
    waitForServer();
}

void X11SceneWindow::waitForServer()
{
    const auto cookie = xcb_get_input_focus(m_connection.get());
    if (!own(xcb_get_input_focus_reply(m_connection.get(), cookie, nullptr)))
        throw std::runtime_error("the X server went away");
}

} // namespace quelto
