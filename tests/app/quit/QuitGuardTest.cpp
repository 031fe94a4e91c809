// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/quit/QuitGuard.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class QuitGuardTest : public testing::Test {
protected:
    /// What the guard did since the last call.
    QStringList takeActions() { return std::exchange(m_actions, {}); }
    static QStringList actions(std::initializer_list<const char*> names)
    {
        QStringList list;
        for (const auto* name : names) {
            list.append(QString::fromUtf8(name));
        }
        return list;
    }
    void waitForExports()
    {
        guard.userQuits(true);
        guard.quitWhenDone();
        takeActions();
    }

private:
    std::function<void()> note(const char* action)
    {
        return [this, action] { m_actions.append(QLatin1String(action)); };
    }

    QStringList m_actions;

protected:
    const HostTime start{1h};
    QuitGuard guard{{.ask = note("ask"),
                     .withdraw = note("withdraw"),
                     .announce = note("announce"),
                     .explain = [this](const QString& failure) { m_actions.append(failure); },
                     .stopExports = note("stop"),
                     .quit = note("quit")}};
};

TEST_F(QuitGuardTest, QuitsAtOnceWithoutExports)
{
    guard.userQuits(false);
    EXPECT_EQ(takeActions(), actions({"quit"}));
    EXPECT_TRUE(guard.isQuitting());
}

TEST_F(QuitGuardTest, AsksTheUserWhileClipsAreExported)
{
    guard.userQuits(true);
    EXPECT_EQ(takeActions(), actions({"ask"}));
    EXPECT_FALSE(guard.isQuitting());
}

TEST_F(QuitGuardTest, ASecondRequestBringsTheQuestionToTheFront)
{
    guard.userQuits(true);
    guard.userQuits(true);
    EXPECT_EQ(takeActions(), actions({"ask", "ask"}));
    guard.quitNow();
    EXPECT_EQ(takeActions(), actions({"stop", "quit"})) << "one answer is enough";
}

TEST_F(QuitGuardTest, QuitNowStopsTheExportsAndQuitsOnce)
{
    guard.userQuits(true);
    takeActions();
    guard.quitNow();
    EXPECT_EQ(takeActions(), actions({"stop", "quit"}));
    // The stopped export has not ended yet.
    guard.userQuits(true);
    guard.systemQuits();
    guard.exportsEnded();
    guard.exportFailed(QStringLiteral("failure"));
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitGuardTest, QuitWhenDoneWaitsForTheExports)
{
    guard.userQuits(true);
    takeActions();
    guard.quitWhenDone();
    EXPECT_EQ(takeActions(), actions({"announce"}));
    EXPECT_FALSE(guard.isQuitting());
    guard.exportsEnded();
    EXPECT_EQ(takeActions(), actions({"quit"}));
    EXPECT_TRUE(guard.isQuitting());
}

TEST_F(QuitGuardTest, AsksAgainWhileItWaits)
{
    waitForExports();
    guard.userQuits(true);
    EXPECT_EQ(takeActions(), actions({"ask"}));
    guard.quitNow();
    EXPECT_EQ(takeActions(), actions({"stop", "quit"}));
}

TEST_F(QuitGuardTest, StayTakesTheRequestBack)
{
    guard.userQuits(true);
    guard.stay();
    takeActions();
    guard.exportsEnded();
    EXPECT_EQ(takeActions(), QStringList());
    EXPECT_FALSE(guard.isQuitting());
}

TEST_F(QuitGuardTest, StayAlsoTakesAnEarlierAnswerBack)
{
    waitForExports();
    guard.userQuits(true);
    guard.stay();
    takeActions();
    guard.exportsEnded();
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitGuardTest, QuitsIfTheExportsEndBeforeTheAnswer)
{
    guard.userQuits(true);
    takeActions();
    guard.exportsEnded();
    EXPECT_EQ(takeActions(), actions({"withdraw", "quit"}));
}

TEST_F(QuitGuardTest, AFailureKeepsTheProgramRunning)
{
    waitForExports();
    guard.exportFailed(QStringLiteral("failure"));
    guard.exportsEnded();
    EXPECT_EQ(takeActions(), actions({"failure"}));
    EXPECT_FALSE(guard.isQuitting());
    guard.userQuits(false);
    EXPECT_EQ(takeActions(), actions({"quit"}));
}

TEST_F(QuitGuardTest, AFailureReplacesTheQuestion)
{
    guard.userQuits(true);
    takeActions();
    guard.exportFailed(QStringLiteral("failure"));
    guard.exportsEnded();
    EXPECT_EQ(takeActions(), actions({"withdraw", "failure"}));
    EXPECT_FALSE(guard.isQuitting());
}

TEST_F(QuitGuardTest, ExportsThatEndWhileNobodyQuitsDoNothing)
{
    guard.exportFailed(QStringLiteral("failure"));
    guard.exportsEnded();
    guard.check(start, 0);
    guard.check(start + 1h, 0);
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitGuardTest, AnswersWithoutAQuestionDoNothing)
{
    guard.quitNow();
    guard.quitWhenDone();
    guard.stay();
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitGuardTest, TheSystemIsNeverAskedAndStopsExports)
{
    guard.systemQuits();
    EXPECT_EQ(takeActions(), actions({"stop", "quit"}));
    guard.systemQuits();
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitGuardTest, TheSystemQuitsWhileTheQuestionIsOpen)
{
    guard.userQuits(true);
    takeActions();
    guard.systemQuits();
    EXPECT_EQ(takeActions(), actions({"stop", "quit"}));
    guard.quitWhenDone();
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitGuardTest, TheSystemQuitsWhileItWaits)
{
    waitForExports();
    guard.systemQuits();
    EXPECT_EQ(takeActions(), actions({"stop", "quit"}));
}

TEST_F(QuitGuardTest, AnExportWithoutASignOfLifeForAMinuteHangs)
{
    waitForExports();
    guard.check(start, 7);
    guard.check(start + 59s, 7);
    EXPECT_EQ(takeActions(), QStringList());
    guard.check(start + 60s, 7);
    EXPECT_EQ(takeActions(), actions({"Dışa aktarma bir dakikadır ilerlemiyor. Disk yanıt vermiyor olabilir."}));
    guard.check(start + 61s, 7);
    EXPECT_EQ(takeActions(), QStringList()) << "a hung export is reported once";
    guard.exportsEnded();
    EXPECT_EQ(takeActions(), QStringList()) << "the user may have started something else";
}

TEST_F(QuitGuardTest, ASlowExportDoesNotHang)
{
    waitForExports();
    for (std::uint64_t signs = 0; signs < 10; ++signs) {
        guard.check(start + signs * 59s, signs);
    }
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitGuardTest, TheMinuteStartsWithTheWait)
{
    waitForExports();
    guard.check(start, 7);
    guard.userQuits(true);
    guard.check(start + 2min, 7);
    EXPECT_EQ(takeActions(), actions({"ask"})) << "the user decides meanwhile";
    guard.quitWhenDone();
    takeActions();
    guard.check(start + 2min, 7);
    EXPECT_EQ(takeActions(), QStringList());
}

} // namespace
} // namespace quelto
