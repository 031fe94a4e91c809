// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestServer.h"

#include "base/keys/HotKeyText.h"
#include "base/keys/KeyCodes.h"
#include "platform/x11/X11Platform.h"

#include <gtest/gtest.h>

#include <map>
#include <thread>

namespace quelto {
namespace {

using test::eventually;
using test::Painter;
using test::TestServer;

// Stored codes.
constexpr std::uint32_t C = 8;
constexpr std::uint32_t Q = 12;
constexpr std::uint32_t Semicolon = 41;
constexpr std::uint32_t F9 = 101;
constexpr std::uint32_t Print = 105;
constexpr std::uint32_t OptionShift = modifierBits::option | modifierBits::shift;

class X11GlobalKey : public testing::Test {
protected:
    X11GlobalKey()
        : m_key(makeX11GlobalKey(m_server.name()))
    {
        m_key->onPressed = [this] { ++m_presses; };
        layout({QStringLiteral("us")});
    }

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
    void down(const std::vector<const char*>& keys) { send("keydown", keys); }
    void up(std::vector<const char*> keys)
    {
        std::ranges::reverse(keys);
        send("keyup", keys);
    }
    void settle()
    {
        eventually([] { return false; }, std::chrono::milliseconds(150));
    }
    /// The number of presses since the last call.
    int takePresses()
    {
        settle();
        return std::exchange(m_presses, 0);
    }

    TestServer m_server;
    std::unique_ptr<GlobalKey> m_key;
    int m_presses = 0;

private:
    void send(const char* command, const std::vector<const char*>& keys)
    {
        // A virtual server's key codes are the kernel's plus 8.
        const std::map<std::string_view, int> others{{"LFSH", 50}, {"LALT", 64}, {"LCTL", 37}, {"LWIN", 133},
                                                     {"CAPS", 66}, {"NMLK", 77}, {"SCLK", 78}};
        QStringList arguments{QString::fromUtf8(command)};
        for (const std::string_view key : keys) {
            const auto positions = keyPositions();
            const auto found =
                std::ranges::find_if(positions, [&](const KeyPosition& position) { return position.xkbName == key; });
            arguments.append(QString::number(
                others.contains(key) ? others.at(key)
                                     : static_cast<int>(found == positions.end() ? 0 : found->scanCode + 8)));
        }
        ASSERT_TRUE(m_server.run(QStringLiteral("xdotool"), arguments));
    }
};

TEST_F(X11GlobalKey, FiresOncePerPress)
{
    m_key->grab(C, OptionShift);
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1);
    press({"LALT", "LFSH", "AB03"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 2);
}

TEST_F(X11GlobalKey, RequiresExactlyItsModifiers)
{
    m_key->grab(C, OptionShift);
    press({"AB03"});
    press({"LALT", "AB03"});
    press({"LFSH", "AB03"});
    press({"LALT", "LFSH", "LCTL", "AB03"});
    press({"LALT", "LFSH", "AB04"});
    EXPECT_EQ(takePresses(), 0);
}

TEST_F(X11GlobalKey, SupportsAllModifiers)
{
    struct Row {
        std::uint32_t code;
        std::uint32_t modifiers;
        std::vector<const char*> keys;
    };
    // Control, Alt and a function key together are reserved by the server.
    for (const auto& row : {Row{F9, 0, {"FK09"}}, Row{F9, modifierBits::command, {"LWIN", "FK09"}},
                            Row{F9, modifierBits::control, {"LCTL", "FK09"}},
                            Row{C, modifierBits::option | modifierBits::control, {"LALT", "LCTL", "AB03"}},
                            Row{F9, modifierBits::command | modifierBits::shift, {"LWIN", "LFSH", "FK09"}}}) {
        m_key->grab(row.code, row.modifiers);
        press(row.keys);
        EXPECT_EQ(takePresses(), 1) << row.modifiers;
    }
}

TEST_F(X11GlobalKey, FiresInEveryLockState)
{
    m_key->grab(C, OptionShift);
    press({"CAPS"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1) << "Caps Lock";
    press({"NMLK"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1) << "Caps Lock and Num Lock";
    press({"CAPS"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1) << "Num Lock";
    press({"NMLK"});
}

TEST_F(X11GlobalKey, SamePhysicalKeyInEveryLayout)
{
    for (const auto* name : {"us", "de", "fr", "dvorak", "ru", "tr"}) {
        layout(QString::fromUtf8(name) == u"dvorak" ? QStringList{QStringLiteral("us"), QStringLiteral("dvorak")}
                                                    : QStringList{QString::fromUtf8(name)});
        for (const auto& [code, key] : {std::pair{C, "AB03"}, std::pair{Q, "AD01"}, std::pair{Semicolon, "AC10"}}) {
            m_key->grab(code, OptionShift);
            press({"LALT", "LFSH", key});
            EXPECT_EQ(takePresses(), 1) << name << " " << key;
        }
    }
}

TEST_F(X11GlobalKey, FiresInTheSecondLayoutGroup)
{
    layout({QStringLiteral("us,ru"), QStringLiteral("-option"), QStringLiteral("grp:caps_toggle")});
    m_key->grab(C, OptionShift);
    press({"CAPS"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1);
}

TEST_F(X11GlobalKey, GrabsAgainAfterALayoutChange)
{
    m_key->grab(C, OptionShift);
    layout({QStringLiteral("de")});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1);
    // Swaps Alt and Super, so both the key and the modifier bit change.
    layout({QStringLiteral("us"), QStringLiteral("-option"), QStringLiteral("altwin:swap_alt_win")});
    press({"LWIN", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1);
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 0);
}

TEST_F(X11GlobalKey, KeepsItsGrabWhileTheLayoutChanges)
{
    m_key->grab(F9, 0);
    settle();
    const Painter other(m_server.name());
    int grabbedByOther = 0;
    {
        // Another client can grab the key only while Quelto has not. A press at such a time would be lost.
        const std::jthread otherClient([&](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                const auto cookie = xcb_grab_key_checked(other.server(), 0, other.connection().root(), 0, 75,
                                                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
                const XcbPtr<xcb_generic_error_t> error(xcb_request_check(other.server(), cookie));
                if (!error) {
                    ++grabbedByOther;
                    xcb_ungrab_key(other.server(), 75, other.connection().root(), 0);
                }
            }
        });
        for (const auto* name : {"de", "us", "fr", "us", "de", "us"}) {
            layout({QString::fromUtf8(name)});
        }
    }
    EXPECT_EQ(grabbedByOther, 0);
    press({"FK09"});
    EXPECT_EQ(takePresses(), 1);
}

TEST_F(X11GlobalKey, IgnoresAutoRepeat)
{
    ASSERT_TRUE(
        m_server.run(QStringLiteral("xset"),
                     {QStringLiteral("r"), QStringLiteral("rate"), QStringLiteral("50"), QStringLiteral("50")}));
    m_key->grab(F9, 0);
    down({"FK09"});
    eventually([] { return false; }, std::chrono::milliseconds(500));
    EXPECT_EQ(takePresses(), 1);
    up({"FK09"});
    press({"FK09"});
    EXPECT_EQ(takePresses(), 1);
}

TEST_F(X11GlobalKey, RekeysTheEarlierCombination)
{
    m_key->grab(C, OptionShift);
    m_key->grab(F9, 0);
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 0);
    press({"FK09"});
    EXPECT_EQ(takePresses(), 1);
}

TEST_F(X11GlobalKey, DoesNotFireAfterRelease)
{
    m_key->grab(F9, 0);
    m_key->release();
    press({"FK09"});
    EXPECT_EQ(takePresses(), 0);
    m_key->release();
    layout({QStringLiteral("de")});
    press({"FK09"});
    EXPECT_EQ(takePresses(), 0) << "a new layout must not grab again";
}

TEST_F(X11GlobalKey, DoesNotFireIfAnotherProgramHasGrabbedTheKey)
{
    const Painter other(m_server.name());
    xcb_grab_key(other.server(), 0, other.connection().root(), XCB_MOD_MASK_ANY, 75, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    // A reply means that the server has processed the grab.
    replyTo(xcb_get_input_focus_reply, other.server(), xcb_get_input_focus(other.server()));
    m_key->grab(F9, 0);
    press({"FK09"});
    EXPECT_EQ(takePresses(), 0);
    m_key->grab(C, 0);
    press({"AB03"});
    EXPECT_EQ(takePresses(), 1) << "the refused grab must have no effect";
}

TEST_F(X11GlobalKey, PrintKeyServesAsF13)
{
    m_key->grab(Print, 0);
    press({"PRSC"});
    EXPECT_EQ(takePresses(), 1);
}

TEST_F(X11GlobalKey, IgnoresUnknownKeyCodes)
{
    m_key->grab(200, 0);
    press({"FK09"});
    EXPECT_EQ(takePresses(), 0);
}

TEST_F(X11GlobalKey, SurvivesTheDeathOfTheServer)
{
    m_key->grab(F9, 0);
    m_server.kill();
    settle();
    m_key->grab(C, 0);
    m_key->release();
    EXPECT_EQ(takePresses(), 0);
}

TEST(X11GlobalKeyWithoutAServer, DoesNothing)
{
    const auto key = makeX11GlobalKey(QStringLiteral(":9999"));
    key->grab(F9, 0);
    key->release();
}

} // namespace
} // namespace quelto
