// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/factory/SessionChoice.h"

#include "platform/PlatformError.h"
#include "platform/factory/NullPlatform.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct Session {
    const char* name;
    const char* forced;
    bool isWayland;
    bool hasPortal;
    ScreenBackEnd screen;
    bool hasProblem = false;
};

class SessionChoiceTest : public testing::TestWithParam<Session> { };

TEST_P(SessionChoiceTest, PicksTheFirstThatApplies)
{
    const auto& session = GetParam();
    const auto choice =
        chooseSession({.forced = QString::fromUtf8(session.forced),
                       .isWayland = session.isWayland,
                       .canReach = [&](const QString& name) {
                           return session.hasPortal && name == QStringLiteral("org.freedesktop.portal.Desktop");
                       }});
    EXPECT_EQ(choice.screen, session.screen);
    EXPECT_EQ(!choice.problem.isEmpty(), session.hasProblem) << choice.problem.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Sessions, SessionChoiceTest,
                         testing::Values(Session{"X11", "", false, true, ScreenBackEnd::x11},
                                         Session{"X11WithoutAPortal", "", false, false, ScreenBackEnd::x11},
                                         Session{"Wayland", "", true, true, ScreenBackEnd::portal},
                                         Session{"WaylandWithoutAPortal", "", true, false, ScreenBackEnd::none, true},
                                         Session{"ForcedX11", "x11", true, true, ScreenBackEnd::x11},
                                         Session{"ForcedPortal", "portal", false, false, ScreenBackEnd::portal},
                                         Session{"ForcedNone", "none", false, true, ScreenBackEnd::none, true},
                                         Session{"UnknownValue", "mir", true, true, ScreenBackEnd::portal}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(NullPlatform, HasADisplayThatSaysWhyItCannotBeRecorded)
{
    EXPECT_EQ(makeNullDisplays()->all().size(), 1);
    const auto frames = makeNullFrameSource(QStringLiteral("no portal"));
    try {
        frames->open({.displayID = 1}, {});
        ADD_FAILURE() << "it opened";
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.message(), QStringLiteral("no portal"));
    }
    frames->stop();
}

} // namespace
} // namespace quelto
