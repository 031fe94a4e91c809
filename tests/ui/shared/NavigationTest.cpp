// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/Navigation.h"

#include "tests/queues/ManualQueue.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class NavigationTest : public testing::Test {
protected:
    test::ManualTime time;
    test::ManualQueue queue{time};
    Navigation navigation{queue};
};

TEST_F(NavigationTest, AToastStandsForTwoAndAHalfSeconds)
{
    navigation.showToast(QStringLiteral("A"));
    time.advance(2499ms);
    EXPECT_EQ(navigation.toast(), QStringLiteral("A"));
    time.advance(1ms);
    EXPECT_EQ(navigation.toast(), QString());
}

TEST_F(NavigationTest, AnotherToastHasItsWholeTime)
{
    navigation.showToast(QStringLiteral("A"));
    time.advance(1s);
    navigation.showToast(QStringLiteral("B"));
    time.advance(2499ms);
    EXPECT_EQ(navigation.toast(), QStringLiteral("B"));
    time.advance(1ms);
    EXPECT_EQ(navigation.toast(), QString());
}

TEST_F(NavigationTest, TheSameToastAgainGoesWithTheFirst)
{
    navigation.showToast(QStringLiteral("A"));
    time.advance(2s);
    navigation.showToast(QStringLiteral("A"));
    time.advance(500ms);
    EXPECT_EQ(navigation.toast(), QString());
}

TEST_F(NavigationTest, ItsPagesHaveTexts)
{
    EXPECT_EQ(pageText({}), QStringLiteral("library"));
    EXPECT_EQ(pageText({.kind = Pages::Kind::Matches, .match = {}}), QStringLiteral("matches"));
    EXPECT_EQ(
        pageText({.kind = Pages::Kind::Review, .match = QUuid(QStringLiteral("8f14e45f-ceea-467f-9575-1b2a3c4d5e6f"))}),
        QStringLiteral("review 8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F"));
}

} // namespace
} // namespace quelto
