// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ActivationToken.h"
#include "tests/base/environment/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

class ActivationTokenTest : public testing::Test {
protected:
    ActivationTokenTest()
    {
        m_environment.set("XDG_ACTIVATION_TOKEN", {});
        m_environment.set("DESKTOP_STARTUP_ID", {});
    }

    test::ScopedEnvironment m_environment;
};

TEST_F(ActivationTokenTest, OfThisStartComesFromEitherVariable)
{
    EXPECT_EQ(activationToken::present(), "");
    m_environment.set("DESKTOP_STARTUP_ID", "x11");
    EXPECT_EQ(activationToken::present(), "x11");
    m_environment.set("XDG_ACTIVATION_TOKEN", "wayland");
    EXPECT_EQ(activationToken::present(), "wayland");
}

TEST_F(ActivationTokenTest, SurvivesThePlatformData)
{
    EXPECT_EQ(activationToken::fromPlatformData(activationToken::toPlatformData("token")), "token");
    EXPECT_TRUE(activationToken::toPlatformData({}).isEmpty());
    EXPECT_EQ(activationToken::fromPlatformData({}), "");
}

TEST_F(ActivationTokenTest, IsReadFromThePlatformDataOfOtherPrograms)
{
    const auto x11 = QStringLiteral("desktop-startup-id");
    const auto wayland = QStringLiteral("activation-token");
    EXPECT_EQ(activationToken::fromPlatformData({{x11, QStringLiteral("a")}}), "a");
    EXPECT_EQ(activationToken::fromPlatformData({{x11, QStringLiteral("a")}, {wayland, QStringLiteral("b")}}), "b");
    EXPECT_EQ(activationToken::fromPlatformData({{wayland, QVariantList{1}}}), "") << "a value of another type";
}

TEST_F(ActivationTokenTest, IsInTheEnvironmentForTheScopeOnly)
{
    {
        const activationToken::Scope scope("token");
        EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token");
        EXPECT_EQ(qgetenv("DESKTOP_STARTUP_ID"), "token");
    }
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
}

} // namespace
} // namespace quelto
