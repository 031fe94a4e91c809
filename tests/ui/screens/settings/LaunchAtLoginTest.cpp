// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/LaunchAtLogin.h"

#include "base/language/L10n.h"

#include "tests/base/tasks/ManualQueue.h"
#include "tests/ui/RecordingDesktop.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

/// Replies when the test says so.
class SlowLoginItem final : public LoginItem {
public:
    void read(Reply reply) override { replies.append(std::move(reply)); }
    void setEnabled(bool isEnabled, Reply reply) override
    {
        wanted.append(isEnabled);
        replies.append(std::move(reply));
    }

    QList<bool> wanted;
    QList<Reply> replies;
};

class LaunchAtLoginTest : public testing::Test {
protected:
    LaunchAtLoginTest() { L10n::use(QStringLiteral("tr")); }

    test::ManualTime time;
    test::ManualQueue main{time};
    Navigation navigation{main};
    test::FakeLoginItem item;
};

TEST_F(LaunchAtLoginTest, StartsWithTheRealState)
{
    EXPECT_FALSE(LaunchAtLogin(item, navigation).isOn());
    item.isEnabled = true;
    EXPECT_TRUE(LaunchAtLogin(item, navigation).isOn());
}

TEST_F(LaunchAtLoginTest, ChangesTheState)
{
    LaunchAtLogin login(item, navigation);
    login.setOn(true);
    EXPECT_TRUE(item.isEnabled);
    EXPECT_TRUE(login.isOn());
    login.setOn(false);
    EXPECT_FALSE(item.isEnabled);
    EXPECT_FALSE(login.isOn());
    EXPECT_EQ(navigation.toast(), QString());
}

TEST_F(LaunchAtLoginTest, FailedChangeIsReportedAndLeavesTheState)
{
    item.failure = QStringLiteral("Disk dolu");
    LaunchAtLogin login(item, navigation);
    login.setOn(true);
    EXPECT_FALSE(login.isOn());
    EXPECT_EQ(navigation.toast(), QStringLiteral("Girişte başlat ayarlanamadı: Disk dolu"));
}

TEST_F(LaunchAtLoginTest, IgnoresChangesDuringAChange)
{
    SlowLoginItem slow;
    LaunchAtLogin login(slow, navigation);
    login.setOn(true);
    EXPECT_TRUE(slow.wanted.isEmpty());
    EXPECT_TRUE(login.isBusy());
    slow.replies.takeFirst()({.isEnabled = false});
    EXPECT_FALSE(login.isBusy());
    int changes = 0;
    QObject::connect(&login, &LaunchAtLogin::changed, &login, [&] { ++changes; });
    login.setOn(true);
    login.setOn(false);
    EXPECT_EQ(slow.wanted, QList<bool>{true});
    EXPECT_TRUE(login.isBusy());
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(login.isOn());
    slow.replies.takeFirst()({.isEnabled = true});
    EXPECT_TRUE(login.isOn());
    EXPECT_FALSE(login.isBusy());
    EXPECT_EQ(changes, 2);
}

TEST_F(LaunchAtLoginTest, ReportsAFailureAfterThePageIsClosed)
{
    SlowLoginItem slow;
    {
        LaunchAtLogin login(slow, navigation);
        slow.replies.takeFirst()({.isEnabled = false});
        login.setOn(true);
    }
    slow.replies.takeFirst()({.isEnabled = false, .failure = QStringLiteral("Disk dolu")});
    EXPECT_EQ(navigation.toast(), QStringLiteral("Girişte başlat ayarlanamadı: Disk dolu"));
}

} // namespace
} // namespace quelto
