// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11GlobalKeyFixture.h"

namespace quelto {
namespace {

using namespace test::codes;
using test::eventually;
using test::OptionShift;
using test::Painter;
using State = GlobalKey::State;

class X11GlobalKeyState : public test::X11GlobalKeyFixture { };

TEST_F(X11GlobalKeyState, TellsWhetherItIsHeld)
{
    EXPECT_EQ(m_key->state(), State::Released);
    m_key->grab(C, OptionShift);
    EXPECT_EQ(m_key->state(), State::Held);
    m_key->grab(200, 0);
    EXPECT_EQ(m_key->state(), State::Unavailable);
    m_key->grab(F9, 0);
    m_key->release();
    EXPECT_EQ(m_key->state(), State::Released);
    EXPECT_EQ(m_states, (std::vector{State::Held, State::Unavailable, State::Held, State::Released}));
}

TEST_F(X11GlobalKeyState, IsTakenWhileAnotherProgramHoldsItInOneLockState)
{
    for (const std::uint16_t locks : std::initializer_list<std::uint16_t>{0, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2}) {
        std::optional<Painter> other(m_server.name());
        grabF9(*other, locks);
        m_key->grab(F9, 0);
        EXPECT_EQ(m_key->state(), State::Taken) << locks;
        other.reset();
        EXPECT_TRUE(eventually([&] { return m_key->state() == State::Held; })) << locks;
        press({"FK09"});
        EXPECT_EQ(takePresses(), 1) << locks;
        m_key->release();
    }
}

TEST_F(X11GlobalKeyState, NoticesThatItIsTakenOnlyForItsOwnCombination)
{
    const Painter other(m_server.name());
    grabF9(other, XCB_MOD_MASK_SHIFT);
    m_key->grab(F9, 0);
    EXPECT_EQ(m_key->state(), State::Held);
    m_key->grab(F9, modifierBits::shift);
    EXPECT_EQ(m_key->state(), State::Taken);
    m_key->grab(F9, modifierBits::control);
    EXPECT_EQ(m_key->state(), State::Held);
}

struct SwitchOption {
    const char* option;
    std::uint32_t code;
    std::uint32_t modifiers;
    /// The keys in two orders of the modifiers.
    std::vector<std::vector<const char*>> orders;
};

const SwitchOption SwitchOptions[] = {
    {"grp:alt_shift_toggle", C, OptionShift, {{"LALT", "LFSH", "AB03"}, {"LFSH", "LALT", "AB03"}}},
    {"grp:lalt_lshift_toggle", C, OptionShift, {{"LALT", "LFSH", "AB03"}, {"LFSH", "LALT", "AB03"}}},
    {"grp:ctrl_shift_toggle",
     C,
     modifierBits::control | modifierBits::shift,
     {{"LCTL", "LFSH", "AB03"}, {"LFSH", "LCTL", "AB03"}}},
    {"grp:ctrl_alt_toggle",
     C,
     modifierBits::control | modifierBits::option,
     {{"LCTL", "LALT", "AB03"}, {"LALT", "LCTL", "AB03"}}},
    {"grp:alt_space_toggle", Space, modifierBits::option, {{"LALT", "SPCE"}}},
    {"grp:win_space_toggle", Space, modifierBits::command, {{"LWIN", "SPCE"}}},
};

TEST_F(X11GlobalKeyState, ArrivesThoughItsModifiersSwitchTheLayout)
{
    for (const auto& row : SwitchOptions) {
        layout({QStringLiteral("us,ru"), QStringLiteral("-option"), QString(), QStringLiteral("-option"),
                QString::fromUtf8(row.option)});
        m_key->grab(row.code, row.modifiers);
        EXPECT_EQ(m_key->state(), State::SwitchesLayout) << row.option;
        for (const auto& keys : row.orders) {
            const auto before = group();
            press(keys);
            EXPECT_NE(group(), before) << row.option;
            EXPECT_EQ(takePresses(), 1) << row.option << " " << keys.front() << " first";
            down(keys);
            up({keys.back()});
            down({keys.back()});
            up(keys);
            EXPECT_EQ(takePresses(), 2) << row.option << ": the modifiers stay down between two presses";
        }
        press({"AB03"});
        press({"LALT", "AB03"});
        press({"LFSH", "AB03"});
        press({"LCTL", "AB03"});
        press({"LALT", "LFSH", "LCTL", "AB03"});
        press({"LALT", "LFSH", "AB04"});
        EXPECT_EQ(takePresses(), 0) << row.option;
        m_key->grab(F9, 0);
        EXPECT_EQ(m_key->state(), State::Held) << row.option;
        m_key->release();
    }
}

TEST_F(X11GlobalKeyState, IgnoresAutoRepeatOfAKeyThatSwitchesTheLayout)
{
    ASSERT_TRUE(
        m_server.run(QStringLiteral("xset"),
                     {QStringLiteral("r"), QStringLiteral("rate"), QStringLiteral("50"), QStringLiteral("50")}));
    layout({QStringLiteral("us,ru"), QStringLiteral("-option"), QStringLiteral("grp:alt_shift_toggle")});
    m_key->grab(C, OptionShift);
    down({"LALT", "LFSH", "AB03"});
    eventually([] { return false; }, std::chrono::milliseconds(500));
    EXPECT_EQ(takePresses(), 1);
    up({"LALT", "LFSH", "AB03"});
}

TEST_F(X11GlobalKeyState, ArrivesThoughTheOnlyLayoutTakesItsModifiers)
{
    layout({QStringLiteral("us"), QStringLiteral("-option"), QStringLiteral("grp:alt_shift_toggle")});
    m_key->grab(C, OptionShift);
    press({"LALT", "LFSH", "AB03"});
    press({"LFSH", "LALT", "AB03"});
    EXPECT_EQ(takePresses(), 2);
    EXPECT_EQ(m_key->state(), State::Held) << "there is no layout to switch to";
}

TEST_F(X11GlobalKeyState, FollowsChangesOfTheSwitchingKeys)
{
    m_key->grab(C, OptionShift);
    layout({QStringLiteral("us,ru"), QStringLiteral("-option"), QStringLiteral("grp:alt_shift_toggle")});
    EXPECT_TRUE(eventually([&] { return m_key->state() == State::SwitchesLayout; }));
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1);
    layout({QStringLiteral("us,ru"), QStringLiteral("-option"), QString(), QStringLiteral("-option"),
            QStringLiteral("grp:caps_toggle")});
    EXPECT_TRUE(eventually([&] { return m_key->state() == State::Held; }));
    press({"LALT", "LFSH", "AB03"});
    EXPECT_EQ(takePresses(), 1);
}

TEST_F(X11GlobalKeyState, TellsTheCharactersOfTheLayout)
{
    struct Row {
        const char* layout;
        std::uint32_t code;
        const char* characters;
    };
    constexpr std::uint32_t KeypadEnter = 76;
    constexpr std::uint32_t Insert = 114;
    for (const auto& row : {Row{"us", C, "c"}, Row{"us", One, "1"}, Row{"us", Semicolon, ";"}, Row{"us", Keypad1, "1"},
                            Row{"us", F9, ""}, Row{"us", KeypadEnter, ""}, Row{"us", Insert, ""}, Row{"us", Space, ""},
                            Row{"us", 200, ""}, Row{"de", Semicolon, "ö"}, Row{"de", 6, "y"}, Row{"de", 50, "^"},
                            Row{"ru", C, "с"}, Row{"tr", Semicolon, "ş"}, Row{"fr", One, "&"}, Row{"fr", Q, "a"}}) {
        layout({QString::fromUtf8(row.layout)});
        EXPECT_EQ(m_key->characters(row.code), QString::fromUtf8(row.characters)) << row.layout << " " << row.code;
    }
}

TEST_F(X11GlobalKeyState, CharactersAreThoseOfThePresentLayoutWithoutLocksAndModifiers)
{
    layout({QStringLiteral("us,ru"), QStringLiteral("-option"), QStringLiteral("grp:caps_toggle")});
    EXPECT_EQ(m_key->characters(C), QStringLiteral("c"));
    press({"CAPS"});
    EXPECT_EQ(m_key->characters(C), QStringLiteral("с"));
    layout({QStringLiteral("us"), QStringLiteral("-option"), QString()});
    press({"CAPS"});
    down({"LFSH"});
    EXPECT_EQ(m_key->characters(One), QStringLiteral("1"));
    EXPECT_EQ(m_key->characters(C), QStringLiteral("c"));
    up({"LFSH"});
    press({"CAPS"});
}

TEST_F(X11GlobalKeyState, TellsTheHeldModifiersThoughTheLayoutTakesThem)
{
    layout({QStringLiteral("us,ru"), QStringLiteral("-option"), QStringLiteral("grp:alt_shift_toggle")});
    EXPECT_EQ(m_key->heldModifiers(), 0U);
    down({"CAPS", "LALT", "LFSH", "AB03"});
    EXPECT_EQ(m_key->heldModifiers(), OptionShift);
    up({"CAPS", "LALT", "LFSH", "AB03"});
    layout({QStringLiteral("us"), QStringLiteral("-option"), QString(), QStringLiteral("-option"),
            QStringLiteral("altwin:swap_alt_win")});
    down({"LWIN", "LCTL"});
    EXPECT_EQ(m_key->heldModifiers(), modifierBits::option | modifierBits::control);
    up({"LWIN", "LCTL"});
}

TEST_F(X11GlobalKeyState, IsReservedByAWaylandDesktop)
{
    const auto key = makeX11GlobalKey(m_server.name(), X11Session::underWayland);
    key->grab(F9, 0);
    EXPECT_EQ(key->state(), State::ReservedByDesktop);
    key->release();
    EXPECT_EQ(key->state(), State::Released);
    const auto withoutServer = makeX11GlobalKey(QStringLiteral(":9999"), X11Session::underWayland);
    withoutServer->grab(F9, 0);
    EXPECT_EQ(withoutServer->state(), State::ReservedByDesktop);
}

} // namespace
} // namespace quelto
