// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ClipArranger.h"

#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "tests/base/tasks/ManualQueue.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

QList<Clip> clips(qsizetype count)
{
    QList<Clip> clips;
    for (qsizetype i = 0; i < count; ++i) {
        clips.append(Clip(QStringLiteral("/c/Dota 2 - Nr %1.mp4").arg(i), FileStat{.createdAt = -i, .isFile = true}));
    }
    return clips;
}

class ClipArrangerTest : public testing::Test {
protected:
    std::unique_ptr<ClipArranger> makeArranger(std::optional<ClipArranger::Queues> queues)
    {
        return std::make_unique<ClipArranger>(queues, [this](const ArrangedClips& arranged) {
            results.append(arranged.filter.search + QStringLiteral(" %1").arg(arranged.cards.size()));
        });
    }

    void arrange(const char* search) { arranger->arrange({.search = QString::fromUtf8(search)}); }

    test::ManualTime work;
    test::ManualQueue workQueue{work};
    test::ManualTime main;
    test::ManualQueue mainQueue{main};
    std::unique_ptr<ClipArranger> arranger = makeArranger(ClipArranger::Queues{.main = mainQueue, .work = workQueue});
    /// The search and the number of cards of each result.
    QStringList results;
};

TEST_F(ClipArrangerTest, ArrangesAFewClipsAtOnce)
{
    arranger->setClips(clips(ClipArranger::MaxClipsAtOnce));
    arrange("nr 7");
    EXPECT_EQ(results, QStringList{QStringLiteral("nr 7 111")});
    EXPECT_EQ(workQueue.posted(), 0);
}

TEST_F(ClipArrangerTest, ArrangesManyClipsOnTheWorkQueue)
{
    arranger->setClips(clips(ClipArranger::MaxClipsAtOnce + 1));
    arrange("2000");
    EXPECT_TRUE(results.isEmpty());
    work.settle();
    EXPECT_TRUE(results.isEmpty());
    main.settle();
    EXPECT_EQ(results, QStringList{QStringLiteral("2000 1")});
}

TEST_F(ClipArrangerTest, NewestRequestWins)
{
    arranger->setClips(clips(ClipArranger::MaxClipsAtOnce + 1));
    arrange("2");
    arrange("20");
    work.settle();
    EXPECT_EQ(mainQueue.posted(), 1) << "the older request is not even started";
    arrange("200");
    main.settle();
    EXPECT_TRUE(results.isEmpty()) << "its result is outdated";
    work.settle();
    main.settle();
    EXPECT_EQ(results, QStringList{QStringLiteral("200 3")});
}

TEST_F(ClipArrangerTest, FewClipsReplaceManyAtOnce)
{
    arranger->setClips(clips(ClipArranger::MaxClipsAtOnce + 1));
    arrange("");
    work.settle();
    arranger->setClips(clips(3));
    arrange("");
    EXPECT_EQ(results, QStringList{QStringLiteral(" 3")});
    main.settle();
    EXPECT_EQ(results.size(), 1) << "the result for the old clips is dropped";
}

TEST_F(ClipArrangerTest, DestroyedArrangerReceivesNothing)
{
    arranger->setClips(clips(ClipArranger::MaxClipsAtOnce + 1));
    arrange("");
    work.settle();
    arrange("1");
    arranger.reset();
    work.settle();
    main.settle();
    EXPECT_TRUE(results.isEmpty());
}

TEST_F(ClipArrangerTest, ArrangesWithoutQueues)
{
    arranger = makeArranger(std::nullopt);
    arranger->setClips(clips(ClipArranger::MaxClipsAtOnce + 1));
    arrange("2000");
    EXPECT_EQ(results, QStringList{QStringLiteral("2000 1")});
}

TEST_F(ClipArrangerTest, WorksWithThreads)
{
    int count = 0;
    const QCoreApplication application(count, nullptr);
    MainQueue realMain;
    SerialQueue thread(QStringLiteral("quelto.filter"));
    arranger = makeArranger(ClipArranger::Queues{.main = realMain, .work = thread});
    arranger->setClips(clips(ClipArranger::MaxClipsAtOnce * 5));
    for (const auto* search : {"n", "nr", "nr ", "nr 1", "nr 12", "nr 123", "nr 1234"}) {
        arrange(search);
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return results.contains(QStringLiteral("nr 1234 1")); }));
    arrange("");
    arranger->setClips(clips(ClipArranger::MaxClipsAtOnce * 4));
    arrange("nr 7");
    EXPECT_TRUE(QTest::qWaitFor([this] { return results.contains(QStringLiteral("nr 7 1111")); }));
    arrange("gone");
    arranger.reset();
}

} // namespace
} // namespace quelto
