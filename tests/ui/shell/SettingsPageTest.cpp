// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/shell/ShellFixture.h"

namespace quelto::test {
namespace {

class SettingsPageTest : public ShellFixture { };

TEST_F(SettingsPageTest, IsShownFromTheSidebar)
{
    click(QStringLiteral("Ayarlar"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Ayarlar")); }));
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Settings);
}

} // namespace
} // namespace quelto::test
