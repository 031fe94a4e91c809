// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestServer.h"

#include "base/keys/HotKeyText.h"
#include "base/keys/KeyCodes.h"
#include "platform/x11/X11Platform.h"

#include <gtest/gtest.h>

#include <map>

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
    /// Presses and releases the keys at these places together, the last one being the shortcut's.
    void press(const std::vector<const char*>& places)
    {
        down(places);
        up(places);
    }
    void down(const std::vector<const char*>& places) { send("keydown", places); }
    void up(std::vector<const char*> places)
    {
        std::ranges::reverse(places);
        send("keyup", places);
    }
    void settle()
    {
        eventually([] { return false; }, std::chrono::milliseconds(150));
    }
    /// How many presses came since the last time.
    int taken()
    {
        settle();
        return std::exchange(m_presses, 0);
    }

    TestServer m_server;
    std::unique_ptr<GlobalKey> m_key;
    int m_presses = 0;

private:
    void send(const char* command, const std::vector<const char*>& places)
    {
        // A virtual server numbers its keys as the kernel does, plus 8.
        const std::map<std::string_view, int> others{{"LFSH", 50}, {"LALT", 64}, {"LCTL", 37}, {"LWIN", 133},
                                                     {"CAPS", 66}, {"NMLK", 77}, {"SCLK", 78}};
        QStringList arguments{QString::fromUtf8(command)};
        for (const std::string_view place : places) {
            const auto positions = keyPositions();
            const auto found =
                std::ranges::find_if(positions, [&](const KeyPosition& position) { return position.xkbName == place; });
            arguments.append(QString::number(
                others.contains(place) ? others.at(place)
                                       : static_cast<int>(found == positions.end() ? 0 : found->scanCode + 8)));
        }
        ASSERT_TRUE(m_server.run(QStringLiteral("xdotool"), arguments));
    }
};

TEST_F(X11GlobalKey, FiresOnceAPress)
{
    m_key->grab(C, OptionShift);
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 1);
    press({"LALT", "LFSH", "AB03"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 2);
}

TEST_F(X11GlobalKey, NeedsExactlyItsModifiers)
{
    m_key->grab(C, OptionShift);
    press({"AB03"});
    press({"LALT", "AB03"});
    press({"LFSH", "AB03"});
    press({"LALT", "LFSH", "LCTL", "AB03"});
    press({"LALT", "LFSH", "AB04"});
    EXPECT_EQ(taken(), 0);
}

TEST_F(X11GlobalKey, KnowsAllModifiers)
{
    struct Row {
        std::uint32_t code;
        std::uint32_t modifiers;
        std::vector<const char*> places;
    };
    // Control, Alt and a function key together belong to the server itself.
    for (const auto& row : {Row{F9, 0, {"FK09"}}, Row{F9, modifierBits::command, {"LWIN", "FK09"}},
                            Row{F9, modifierBits::control, {"LCTL", "FK09"}},
                            Row{C, modifierBits::option | modifierBits::control, {"LALT", "LCTL", "AB03"}},
                            Row{F9, modifierBits::command | modifierBits::shift, {"LWIN", "LFSH", "FK09"}}}) {
        m_key->grab(row.code, row.modifiers);
        press(row.places);
        EXPECT_EQ(taken(), 1) << row.modifiers;
    }
}

TEST_F(X11GlobalKey, FiresWhateverLockIsOn)
{
    m_key->grab(C, OptionShift);
    press({"CAPS"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 1) << "Caps Lock";
    press({"NMLK"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 1) << "Caps Lock and Num Lock";
    press({"CAPS"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 1) << "Num Lock";
    press({"NMLK"});
}

TEST_F(X11GlobalKey, IsTheSamePlaceInEveryLayout)
{
    for (const auto* name : {"us", "de", "fr", "dvorak", "ru", "tr"}) {
        layout(QString::fromUtf8(name) == u"dvorak" ? QStringList{QStringLiteral("us"), QStringLiteral("dvorak")}
                                                    : QStringList{QString::fromUtf8(name)});
        for (const auto& [code, place] : {std::pair{C, "AB03"}, std::pair{Q, "AD01"}, std::pair{Semicolon, "AC10"}}) {
            m_key->grab(code, OptionShift);
            press({"LALT", "LFSH", place});
            EXPECT_EQ(taken(), 1) << name << " " << place;
        }
    }
}

TEST_F(X11GlobalKey, FiresInTheSecondLayoutGroup)
{
    layout({QStringLiteral("us,ru"), QStringLiteral("-option"), QStringLiteral("grp:caps_toggle")});
    m_key->grab(C, OptionShift);
    press({"CAPS"});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 1);
}

TEST_F(X11GlobalKey, GrabsAnewWhenTheLayoutChanges)
{
    m_key->grab(C, OptionShift);
    layout({QStringLiteral("de")});
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 1);
    // Alt and Super change places: another bit, another key.
    layout({QStringLiteral("us"), QStringLiteral("-option"), QStringLiteral("altwin:swap_alt_win")});
    press({"LWIN", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 1);
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 0);
}

TEST_F(X11GlobalKey, DoesNotRepeatAHeldKey)
{
    ASSERT_TRUE(
        m_server.run(QStringLiteral("xset"),
                     {QStringLiteral("r"), QStringLiteral("rate"), QStringLiteral("50"), QStringLiteral("50")}));
    m_key->grab(F9, 0);
    down({"FK09"});
    eventually([] { return false; }, std::chrono::milliseconds(500));
    EXPECT_EQ(taken(), 1);
    up({"FK09"});
    press({"FK09"});
    EXPECT_EQ(taken(), 1);
}

TEST_F(X11GlobalKey, ReplacesTheEarlierCombination)
{
    m_key->grab(C, OptionShift);
    m_key->grab(F9, 0);
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(taken(), 0);
    press({"FK09"});
    EXPECT_EQ(taken(), 1);
}

TEST_F(X11GlobalKey, IsSilentAfterRelease)
{
    m_key->grab(F9, 0);
    m_key->release();
    press({"FK09"});
    EXPECT_EQ(taken(), 0);
    m_key->release();
    layout({QStringLiteral("de")});
    press({"FK09"});
    EXPECT_EQ(taken(), 0) << "a new layout must not bring it back";
}

TEST_F(X11GlobalKey, NeverFiresWhenAnotherProgramHoldsIt)
{
    const Painter other(m_server.name());
    xcb_grab_key(other.server(), 0, other.connection().root(), XCB_MOD_MASK_ANY, 75, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    // The grab is in force once the server answers something after it.
    replyTo(xcb_get_input_focus_reply, other.server(), xcb_get_input_focus(other.server()));
    m_key->grab(F9, 0);
    press({"FK09"});
    EXPECT_EQ(taken(), 0);
    m_key->grab(C, 0);
    press({"AB03"});
    EXPECT_EQ(taken(), 1) << "the refusal must do no harm";
}

TEST_F(X11GlobalKey, TakesThePcKeysInPlaceOfF13ToF15)
{
    m_key->grab(Print, 0);
    press({"PRSC"});
    EXPECT_EQ(taken(), 1);
}

TEST_F(X11GlobalKey, IgnoresACodeThatNoKeyboardHas)
{
    m_key->grab(200, 0);
    press({"FK09"});
    EXPECT_EQ(taken(), 0);
}

TEST_F(X11GlobalKey, SurvivesTheServersEnd)
{
    m_key->grab(F9, 0);
    m_server.kill();
    settle();
    m_key->grab(C, 0);
    m_key->release();
    EXPECT_EQ(taken(), 0);
}

TEST(X11GlobalKeyWithoutAServer, DoesNothing)
{
    const auto key = makeX11GlobalKey(QStringLiteral(":9999"));
    key->grab(F9, 0);
    key->release();
}

} // namespace
} // namespace quelto
