// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11GlobalKeyFixture.h"

#include <thread>

namespace quelto {
namespace {

using namespace test::codes;
using test::eventually;
using test::OptionShift;
using test::Painter;

class X11GlobalKey : public test::X11GlobalKeyFixture { };

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
    ASSERT_EQ(group(), 1);
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
    EXPECT_EQ(m_key->state(), State::Unavailable);
    m_key->grab(C, 0);
    m_key->release();
    EXPECT_EQ(takePresses(), 0);
}

TEST(X11GlobalKeyWithoutAServer, DoesNothing)
{
    const auto key = makeX11GlobalKey(QStringLiteral(":9999"));
    key->grab(F9, 0);
    EXPECT_EQ(key->state(), State::Unavailable);
    EXPECT_EQ(key->characters(C), QString());
    key->release();
}

} // namespace
} // namespace quelto
