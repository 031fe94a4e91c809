// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestServer.h"

#include "platform/x11/X11Platform.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using test::TestServer;

TEST(X11Displays, DescribeASingleScreen)
{
    const TestServer server(QStringLiteral("640x480"));
    const auto displays = makeX11Displays(server.name())->all();
    ASSERT_EQ(displays.size(), 1);
    EXPECT_NE(displays[0].id, 0U);
    EXPECT_FALSE(displays[0].name.isEmpty());
    EXPECT_EQ(displays[0].pixelSize, QSize(640, 480));
    EXPECT_TRUE(displays[0].isMain);
    EXPECT_EQ(makeX11Displays(server.name())->all(), displays) << "ids must stay";
}

TEST(X11Displays, WholeScreenIsTheDisplayWithoutRandr)
{
    const TestServer server(QStringLiteral("640x480"), {QStringLiteral("-extension"), QStringLiteral("RANDR")});
    const auto displays = makeX11Displays(server.name())->all();
    ASSERT_EQ(displays.size(), 1);
    EXPECT_NE(displays[0].id, 0U);
    EXPECT_EQ(displays[0].pixelSize, QSize(640, 480));
    EXPECT_TRUE(displays[0].isMain);
}

TEST(X11Displays, SeveralMonitorsHaveDistinctIds)
{
    const TestServer server(QStringLiteral("640x480"));
    ASSERT_TRUE(server.run(QStringLiteral("xrandr"),
                           {QStringLiteral("--setmonitor"), QStringLiteral("Left"),
                            QStringLiteral("320/80x480/120+0+0"), QStringLiteral("screen")}));
    ASSERT_TRUE(server.run(QStringLiteral("xrandr"),
                           {QStringLiteral("--setmonitor"), QStringLiteral("*Right"),
                            QStringLiteral("320/80x240/60+320+0"), QStringLiteral("none")}));
    const auto displays = makeX11Displays(server.name())->all();
    ASSERT_EQ(displays.size(), 2);
    EXPECT_NE(displays[0].id, displays[1].id);
    for (const auto& display : displays) {
        EXPECT_NE(display.id, 0U);
        EXPECT_EQ(display.isMain, display.name == u"Right");
        EXPECT_EQ(display.pixelSize, display.name == u"Right" ? QSize(320, 240) : QSize(320, 480));
    }
    EXPECT_EQ(makeX11Displays(server.name())->all(), displays) << "ids must stay";
}

TEST(X11Displays, EmptyWithoutAServer)
{
    EXPECT_TRUE(makeX11Displays(QStringLiteral(":9999"))->all().isEmpty());
}

} // namespace
} // namespace quelto
