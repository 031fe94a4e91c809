// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11GlobalKeyFixture.h"

#include "base/keys/KeyCodes.h"

// The C header has a field whose name is a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
#include <xcb/xcbext.h>

#include <map>

#include <sys/uio.h>

namespace quelto::test {

namespace {

/// The server handles the key as if the user had pressed it. xdotool is no replacement: it sets the layout for each
/// key.
void sendFakeKey(xcb_connection_t* server, FakeKey kind, std::uint8_t key)
{
    static xcb_extension_t extension{.name = "XTEST", .global_id = 0};
    constexpr std::uint8_t FakeInput = 2;
    struct Request {
        std::uint8_t majorOpcode = 0;
        std::uint8_t minorOpcode = FakeInput;
        std::uint16_t length = 0;
        FakeKey kind;
        std::uint8_t key;
        std::array<std::uint8_t, 30> unused{};
    } request{.kind = kind, .key = key};
    static_assert(sizeof request == 36);
    // The library fills in the head and needs room for two parts of its own.
    std::array<iovec, 3> parts{};
    parts[2] = {.iov_base = &request, .iov_len = sizeof request};
    const xcb_protocol_request_t description{.count = 1, .ext = &extension, .opcode = FakeInput, .isvoid = 1};
    xcb_send_request(server, 0, &parts[2], &description);
}

} // namespace

X11GlobalKeyFixture::X11GlobalKeyFixture()
    : m_key(makeX11GlobalKey(m_server.name()))
{
    m_key->onPressed = [this] { ++m_presses; };
    m_key->onStateChanged = [this] { m_states.push_back(m_key->state()); };
    replyTo(xcb_xkb_use_extension_reply, m_user.server(), xcb_xkb_use_extension(m_user.server(), 1, 0));
    layout({QStringLiteral("us")});
}

int X11GlobalKeyFixture::group() const
{
    const auto state =
        replyTo(xcb_xkb_get_state_reply, m_user.server(), xcb_xkb_get_state(m_user.server(), XCB_XKB_ID_USE_CORE_KBD));
    return state ? state->group : -1;
}

void X11GlobalKeyFixture::send(FakeKey kind, const std::vector<const char*>& keys)
{
    // A virtual server's key codes are the kernel's plus 8.
    const std::map<std::string_view, int> others{{"LFSH", 50}, {"LALT", 64}, {"LCTL", 37}, {"LWIN", 133},
                                                 {"CAPS", 66}, {"NMLK", 77}, {"SCLK", 78}};
    for (const std::string_view key : keys) {
        const auto positions = keyPositions();
        const auto found =
            std::ranges::find_if(positions, [&](const KeyPosition& position) { return position.xkbName == key; });
        sendFakeKey(m_user.server(), kind,
                    static_cast<std::uint8_t>(others.contains(key) ? others.at(key) : found->scanCode + 8));
    }
    waitForServer();
}

} // namespace quelto::test
