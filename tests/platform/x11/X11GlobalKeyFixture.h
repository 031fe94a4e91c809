// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TestServer.h"

#include "base/keys/HotKeyText.h"
#include "platform/x11/X11Platform.h"

#include <gtest/gtest.h>

namespace quelto::test {

// Stored codes.
namespace codes {
constexpr std::uint32_t C = 8;
constexpr std::uint32_t Q = 12;
constexpr std::uint32_t One = 18;
constexpr std::uint32_t Semicolon = 41;
constexpr std::uint32_t Space = 49;
constexpr std::uint32_t Keypad1 = 83;
constexpr std::uint32_t F9 = 101;
constexpr std::uint32_t Print = 105;
} // namespace codes
constexpr std::uint32_t OptionShift = modifierBits::option | modifierBits::shift;

enum class FakeKey : std::uint8_t { press = XCB_KEY_PRESS, release = XCB_KEY_RELEASE };

/// A global key on a server of its own, and a user who presses keys there.
class X11GlobalKeyFixture : public testing::Test {
protected:
    X11GlobalKeyFixture();

    void layout(const QStringList& arguments)
    {
        ASSERT_TRUE(m_server.run(QStringLiteral("setxkbmap"), arguments));
        settle();
    }
    /// Presses and releases the keys at these XKB positions together, the shortcut's key last.
    void press(const std::vector<const char*>& keys)
    {
        down(keys);
        up(keys);
    }
    void down(const std::vector<const char*>& keys) { send(FakeKey::press, keys); }
    void up(std::vector<const char*> keys)
    {
        std::ranges::reverse(keys);
        send(FakeKey::release, keys);
    }
    static void grabF9(const Painter& client, std::uint16_t modifiers)
    {
        const auto request = xcb_grab_key_checked(client.server(), 0, client.connection().root(), modifiers, 75,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const XcbPtr<xcb_generic_error_t> error(xcb_request_check(client.server(), request));
        ASSERT_FALSE(error);
    }
    void settle()
    {
        eventually([] { return false; }, std::chrono::milliseconds(150));
    }
    /// Until the server has handled the fake keys.
    void waitForServer() { replyTo(xcb_get_input_focus_reply, m_user.server(), xcb_get_input_focus(m_user.server())); }
    /// Which of the layouts is in use.
    int group() const;
    /// The number of presses since the last call.
    int takePresses()
    {
        settle();
        return std::exchange(m_presses, 0);
    }

    TestServer m_server;
    std::unique_ptr<GlobalKey> m_key;
    int m_presses = 0;
    std::vector<GlobalKey::State> m_states;

private:
    void send(FakeKey kind, const std::vector<const char*>& keys);

    Painter m_user{m_server.name()};
};

} // namespace quelto::test
