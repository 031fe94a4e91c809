// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/quit/QuitSequence.h"

#include "base/tasks/MainQueue.h"
#include "export/errors/ExportError.h"

#include "tests/base/tasks/ManualQueue.h"

#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

/// The real question and the real queue with its thread.
class QuitSequenceTest : public testing::Test {
protected:
    /// Runs until the test ends it, or until it is stopped.
    struct Export {
        std::atomic<bool> mayEnd = false;
        std::atomic<bool> fails = false;
        std::atomic<bool> wasStopped = false;

        void end()
        {
            mayEnd = true;
            mayEnd.notify_all();
        }
    };

    std::shared_ptr<Export> startExport()
    {
        const auto running = std::make_shared<Export>();
        exports.run({.work = [running](const ExportControl& control) {
            const std::stop_callback onStop(control.stop, [&] {
                running->wasStopped = true;
                running->end();
            });
            running->mayEnd.wait(false);
            if (running->wasStopped) {
                throw ExportStopped();
            }
            if (running->fails) {
                throw ExportError::noVideo();
            }
            return QStringLiteral("a.mp4");
        }});
        return running;
    }
    void end(Export& running)
    {
        running.end();
        waitUntilIdle();
    }
    void waitUntilIdle()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !exports.isBusy(); }, 30000));
    }
    QStringList takeActions() { return std::exchange(m_actions, {}); }

private:
    QStringList m_actions;

protected:
    test::ManualTime time;
    test::ManualQueue polls{time};
    MainQueue main;
    ExportQueue exports{main};
    QuitQuestion question;
    bool isWindowActive = true;
    int checks = 0;
    QuitSequence sequence{{.exports = exports,
                           .question = question,
                           .main = polls,
                           .actions = {.showWindow = [this] { m_actions.append(QStringLiteral("window")); },
                                       .isWindowActive = [this] { return isWindowActive; },
                                       .showToast = [this](const QString& text) { m_actions.append(text); },
                                       .notifyDesktop = [this](const QString& failure) { m_actions.append(failure); },
                                       .quit = [this] { m_actions.append(QStringLiteral("quit")); }},
                           .clock = [this] {
                               ++checks;
                               return time.now();
                           }}};
};

TEST_F(QuitSequenceTest, QuitsWithoutAQuestionWhileNothingIsExported)
{
    sequence.userQuits();
    EXPECT_FALSE(question.isAsked());
    EXPECT_TRUE(sequence.isQuitting());
    EXPECT_EQ(takeActions(), QStringList{QStringLiteral("quit")});
}

TEST_F(QuitSequenceTest, AsksInTheWindowWithTheNumberOfExports)
{
    startExport();
    startExport();
    sequence.userQuits();
    EXPECT_TRUE(question.isAsked());
    EXPECT_EQ(question.exportCount(), 2);
    EXPECT_EQ(takeActions(), QStringList{QStringLiteral("window")});
}

TEST_F(QuitSequenceTest, TheNumberFollowsTheExportsWhileTheQuestionIsOpen)
{
    const auto first = startExport();
    startExport();
    sequence.userQuits();
    first->end();
    EXPECT_TRUE(QTest::qWaitFor([this] { return question.exportCount() == 1; }, 30000));
    EXPECT_TRUE(question.isAsked());
}

TEST_F(QuitSequenceTest, QuitsWhenAllExportsAreDone)
{
    const auto first = startExport();
    const auto second = startExport();
    sequence.userQuits();
    takeActions();
    question.quitWhenDone();
    EXPECT_EQ(takeActions(), QStringList{QStringLiteral("Dışa aktarma bitince Quelto kapanacak")});
    first->end();
    ASSERT_TRUE(QTest::qWaitFor([this] { return exports.count() == 1; }, 30000));
    EXPECT_EQ(takeActions(), QStringList());
    end(*second);
    EXPECT_EQ(takeActions(), QStringList{QStringLiteral("quit")});
}

TEST_F(QuitSequenceTest, QuitNowStopsTheExports)
{
    const auto running = startExport();
    sequence.userQuits();
    takeActions();
    question.quitNow();
    EXPECT_EQ(takeActions(), QStringList{QStringLiteral("quit")});
    waitUntilIdle();
    EXPECT_TRUE(running->wasStopped);
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitSequenceTest, DismissingTheQuestionLetsTheExportGoOn)
{
    const auto running = startExport();
    sequence.userQuits();
    question.dismiss();
    takeActions();
    end(*running);
    EXPECT_FALSE(running->wasStopped);
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitSequenceTest, QuitsIfTheExportEndsBeforeTheAnswer)
{
    const auto running = startExport();
    sequence.userQuits();
    takeActions();
    end(*running);
    EXPECT_FALSE(question.isAsked());
    EXPECT_EQ(takeActions(), QStringList{QStringLiteral("quit")});
}

TEST_F(QuitSequenceTest, AFailureIsShownInTheWindowInsteadOfQuitting)
{
    const auto running = startExport();
    running->fails = true;
    sequence.userQuits();
    question.quitWhenDone();
    takeActions();
    end(*running);
    EXPECT_EQ(question.failure(), QStringLiteral("Klipte video bulunamadı."));
    EXPECT_FALSE(sequence.isQuitting());
    EXPECT_EQ(takeActions(), QStringList());
}

TEST_F(QuitSequenceTest, AFailureIsAlsoToldOutsideAWindowThatIsNotSeen)
{
    const auto running = startExport();
    running->fails = true;
    sequence.userQuits();
    question.quitWhenDone();
    isWindowActive = false;
    takeActions();
    end(*running);
    EXPECT_EQ(takeActions(), QStringList{QStringLiteral("Klipte video bulunamadı.")});
}

TEST_F(QuitSequenceTest, TheNextQuestionReplacesTheFailure)
{
    question.setFailure(QStringLiteral("failure"));
    startExport();
    sequence.userQuits();
    EXPECT_EQ(question.failure(), QString());
    EXPECT_TRUE(question.isAsked());
}

TEST_F(QuitSequenceTest, AHangingExportIsToldAfterAMinute)
{
    startExport();
    time.advance(1h);
    sequence.userQuits();
    question.quitWhenDone();
    time.advance(59s);
    EXPECT_EQ(question.failure(), QString());
    time.advance(3s);
    EXPECT_EQ(question.failure(),
              QStringLiteral("Dışa aktarma bir dakikadır ilerlemiyor. Disk yanıt vermiyor olabilir."));
    EXPECT_FALSE(sequence.isQuitting());
    takeActions();
    // The user can still quit without it.
    sequence.userQuits();
    question.quitNow();
    EXPECT_EQ(takeActions(), (QStringList{QStringLiteral("window"), QStringLiteral("quit")}));
}

TEST_F(QuitSequenceTest, ChecksOnlyWhileClipsAreExported)
{
    for (int i = 0; i < 3; ++i) {
        end(*startExport());
    }
    const auto running = startExport();
    time.advance(10s);
    EXPECT_EQ(checks, 10) << "once a second, also after several exports";
    end(*running);
    time.advance(1h);
    EXPECT_EQ(checks, 10);
}

TEST_F(QuitSequenceTest, TheSystemQuitsWithoutAQuestion)
{
    const auto running = startExport();
    sequence.systemQuits();
    EXPECT_FALSE(question.isAsked());
    EXPECT_EQ(takeActions(), QStringList{QStringLiteral("quit")});
    waitUntilIdle();
    EXPECT_TRUE(running->wasStopped);
}

} // namespace
} // namespace quelto
