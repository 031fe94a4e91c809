// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/KWinScript.h"

#include "KWinScriptEngine.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using test::KWinVersion;

const auto Game = QStringLiteral("{caption: 'Level \"3\"', pid: 42, resourceClass: 'shooter',"
                                 " desktopFileName: 'org.example.Shooter'}");

class KWinScriptTest : public testing::TestWithParam<KWinVersion> {
protected:
    void runScript() { m_engine.run(kwin::activeWindowScript(QStringLiteral(":1.7"))); }
    /// The window in the last report.
    std::optional<WindowIdentity> reported() const { return kwin::readReport(m_calls.last().text); }

    QList<test::ScriptCall> m_calls;
    test::KWinScriptEngine m_engine{GetParam(), [this](const test::ScriptCall& call) { m_calls.append(call); }};
};

INSTANTIATE_TEST_SUITE_P(Versions, KWinScriptTest, testing::Values(KWinVersion::five, KWinVersion::six),
                         [](const auto& each) { return each.param == KWinVersion::five ? "Five" : "Six"; });

TEST_P(KWinScriptTest, ReportsTheWindowThatIsActiveAtFirst)
{
    m_engine.create(QStringLiteral("game"), Game);
    m_engine.activate(QStringLiteral("game"));
    runScript();
    ASSERT_EQ(m_calls.size(), 1);
    EXPECT_EQ(m_calls[0].service, u":1.7");
    EXPECT_EQ(m_calls[0].path, kwin::ReportPath);
    EXPECT_EQ(m_calls[0].interface, kwin::ReportInterface);
    EXPECT_EQ(m_calls[0].method, u"ActiveWindowChanged");
    EXPECT_EQ(reported(),
              (WindowIdentity{.windowClass = QStringLiteral("shooter"),
                              .title = QStringLiteral("Level \"3\""),
                              .applicationID = QStringLiteral("org.example.Shooter"),
                              .processID = 42}));
}

TEST_P(KWinScriptTest, ReportsEachWindowThatBecomesActive)
{
    runScript();
    EXPECT_FALSE(reported());
    m_engine.create(QStringLiteral("game"), Game);
    m_engine.activate(QStringLiteral("game"));
    EXPECT_EQ(reported()->windowClass, u"shooter");
    m_engine.create(QStringLiteral("panel"), QStringLiteral("{desktopWindow: true}"));
    m_engine.activate(QStringLiteral("panel"));
    EXPECT_TRUE(reported()->isDesktop);
    m_engine.activate(QStringLiteral("null"));
    EXPECT_FALSE(reported());
    EXPECT_EQ(m_calls.size(), 4);
}

TEST_P(KWinScriptTest, ReportsManyChangesOfTheTitleOnce)
{
    m_engine.create(QStringLiteral("game"), Game);
    m_engine.activate(QStringLiteral("game"));
    runScript();
    for (int i = 0; i < 50; ++i) {
        m_engine.setTitle(QStringLiteral("game"), QString::number(i));
    }
    EXPECT_EQ(m_calls.size(), 1);
    EXPECT_EQ(m_engine.endTimers(), 1);
    EXPECT_EQ(m_calls.size(), 2);
    EXPECT_EQ(reported()->title, u"49");
}

TEST_P(KWinScriptTest, IgnoresTheTitleOfAWindowThatIsNoLongerActive)
{
    m_engine.create(QStringLiteral("first"), Game);
    m_engine.create(QStringLiteral("second"), Game);
    m_engine.activate(QStringLiteral("first"));
    runScript();
    m_engine.activate(QStringLiteral("second"));
    m_engine.setTitle(QStringLiteral("first"), QStringLiteral("A"));
    EXPECT_EQ(m_engine.endTimers(), 0);
}

TEST_P(KWinScriptTest, SurvivesAWindowThatIsClosedWhileItIsActive)
{
    m_engine.create(QStringLiteral("first"), Game);
    m_engine.create(QStringLiteral("second"), Game);
    m_engine.activate(QStringLiteral("first"));
    runScript();
    m_engine.setTitle(QStringLiteral("first"), QStringLiteral("A"));
    m_engine.destroy(QStringLiteral("first"));
    m_engine.endTimers();
    EXPECT_FALSE(reported());
    m_engine.activate(QStringLiteral("second"));
    EXPECT_EQ(reported()->windowClass, u"shooter");
}

TEST(KWinReportTest, TextThatIsNoReportIsNoWindow)
{
    for (const auto* text : {"", "{}", "null", "[]", "[1]", "{\"title\":", "7", "\"a\""}) {
        EXPECT_FALSE(kwin::readReport(QString::fromLatin1(text))) << text;
    }
    EXPECT_FALSE(kwin::readReport(QStringLiteral("{\"title\":\"%1\"}").arg(QString(100'000, u'a'))));
}

TEST(KWinReportTest, ValuesOfTheWrongTypeCountAsAbsent)
{
    EXPECT_EQ(kwin::readReport(QStringLiteral(
                  R"({"title":7,"windowClass":["a"],"processID":-3,"isDesktop":"yes","applicationID":null,"x":1})")),
              WindowIdentity());
}

} // namespace
} // namespace quelto
