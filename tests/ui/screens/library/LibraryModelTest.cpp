// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/LibraryModel.h"

#include "base/language/L10n.h"

#include "tests/library/clips/LibraryFixture.h"

#include <QSignalSpy>
#include <QTimeZone>

namespace quelto {
namespace {

class LibraryModelTest : public test::LibraryFixture {
protected:
    LibraryModel::Dependencies modelDependencies()
    {
        return {.library = library,
                .now = [this] { return now; },
                .queues = ClipArranger::Queues{.main = mainQueue, .work = workQueue}};
    }

    void show()
    {
        reload();
        model.setCardTextHeight(60);
        model.setWidth(1000);
        model.setViewHeight(700);
        QObject::connect(&model, &LibraryModel::scrollRequested, &model, [this](qreal top) { model.setViewTop(top); });
    }

    void reload()
    {
        library.reload();
        libraryTime.settle();
    }

    void makeMany(int count)
    {
        for (int i = 0; i < count; ++i) {
            makeFile(QStringLiteral("Dota 2 - Nr %1.mp4").arg(i, 4, 10, QLatin1Char('0')).toUtf8().constData(),
                     (i + 1) * 60);
        }
    }

    QStringList shownTitles()
    {
        QMap<int, QString> titles;
        auto& cards = *model.cards();
        for (int row = 0; row < cards.rowCount(); ++row) {
            const auto position = cards.data(cards.index(row), VisibleCards::PositionRole).toInt();
            if (position >= 0) {
                titles[position] = cards.data(cards.index(row), VisibleCards::TitleRole).toString();
            }
        }
        return titles.values();
    }

    bool isCurrentFullyInView()
    {
        auto& cards = *model.cards();
        for (int row = 0; row < cards.rowCount(); ++row) {
            const auto index = cards.index(row);
            if (cards.data(index, VisibleCards::PositionRole).toInt() == model.currentPosition()) {
                const auto area = cards.data(index, VisibleCards::AreaRole).toRectF();
                return area.top() >= model.viewTop() && area.bottom() <= model.viewTop() + model.viewHeight();
            }
        }
        return false;
    }

    QString firstTime() { return model.cards()->data(model.cards()->index(0), VisibleCards::TimeRole).toString(); }

    QString firstDay()
    {
        auto& days = *model.days();
        for (int row = 0; row < days.rowCount(); ++row) {
            if (const auto title = days.data(days.index(row), VisibleDays::TitleRole).toString(); !title.isEmpty()) {
                return title;
            }
        }
        return {};
    }

    QDateTime now = QDateTime(QDate::currentDate(), QTime(12, 0));
    test::ManualTime work;
    test::ManualQueue workQueue{work};
    test::ManualTime main;
    test::ManualQueue mainQueue{main};
    LibraryModel model{modelDependencies()};
};

TEST_F(LibraryModelTest, IsNotLoadedBeforeTheFolderIsRead)
{
    EXPECT_FALSE(model.isLoaded());
    libraryTime.settle();
    EXPECT_TRUE(model.isLoaded());
    EXPECT_EQ(model.count(), 0);
}

TEST_F(LibraryModelTest, FollowsTheLibrary)
{
    show();
    const QSignalSpy changed(&model, &LibraryModel::clipsChanged);
    makeFile("Dota 2 - Ace.mp4");
    reload();
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(model.count(), 1);
    EXPECT_EQ(shownTitles(), QStringList{QStringLiteral("Ace")});
}

TEST_F(LibraryModelTest, CountsMatchingClipsOnly)
{
    makeFile("Dota 2 - Ace.mp4");
    makeFile("League - Solo.mp4", 1);
    show();
    EXPECT_EQ(model.count(), 2);
    model.setGame(QStringLiteral("League"));
    EXPECT_EQ(model.count(), 2) << "the name takes effect with hasGame";
    model.setHasGame(true);
    EXPECT_EQ(model.count(), 1);
    model.setHasGame(false);
    model.setSearch(QStringLiteral("ac"));
    EXPECT_EQ(shownTitles(), QStringList{QStringLiteral("Ace")});
}

TEST_F(LibraryModelTest, ShowsTheTierBarIfAnyClipOfTheLibraryHasATier)
{
    makeFile("Dota 2 - Ace.mp4");
    show();
    EXPECT_FALSE(model.showsTierBar());
    makeFile("League - 2026-03-01 20.15.07 [BASIT 15] Solo.mp4");
    reload();
    EXPECT_TRUE(model.showsTierBar());
    model.setGame(QStringLiteral("Dota 2"));
    model.setHasGame(true);
    EXPECT_TRUE(model.showsTierBar());
}

TEST_F(LibraryModelTest, ResetsATierFilterThatIsNoLongerOffered)
{
    makeFile("Dota 2 - Ace.mp4");
    const auto triple = makeFile("Dota 2 - 2026-03-01 20.15.07 [ORTA 45] Triple.mp4", 1);
    const auto solo = makeFile("League - 2026-03-01 20.15.08 [BASIT 15] Solo.mp4", 2);
    show();
    model.setTierFilter(QStringLiteral("medium"));
    model.setSearch(QStringLiteral("a"));
    QFile::remove(triple);
    reload();
    EXPECT_EQ(model.tierFilter(), QStringLiteral("medium")) << "the tier bar is still shown";
    EXPECT_EQ(model.count(), 0);
    const QSignalSpy changed(&model, &LibraryModel::filterChanged);
    QFile::remove(solo);
    reload();
    EXPECT_EQ(model.tierFilter(), QStringLiteral("all"));
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(model.search(), QStringLiteral("a"));
    EXPECT_EQ(shownTitles(), QStringList{QStringLiteral("Ace")});
}

TEST_F(LibraryModelTest, KeepsTheTierFilterWhileTheLibraryIsEmpty)
{
    const auto* name = "Dota 2 - 2026-03-01 20.15.07 [ORTA 45] Triple.mp4";
    const auto triple = makeFile(name);
    show();
    model.setTierFilter(QStringLiteral("medium"));
    QFile::remove(triple);
    reload();
    EXPECT_EQ(model.count(), 0);
    EXPECT_EQ(model.tierFilter(), QStringLiteral("medium"));
    makeFile("Dota 2 - Ace.mp4");
    makeFile(name);
    reload();
    EXPECT_EQ(shownTitles(), QStringList{QStringLiteral("Triple")});
}

TEST_F(LibraryModelTest, SortsUprightClipsOfADayFirst)
{
    makeFile("Dota 2 - new.mp4", 60);
    makeFile("Dota 2 - upright (9x16).mp4", 120);
    makeFile("Dota 2 - other (4x5).mp4", 180);
    show();
    EXPECT_EQ(shownTitles(),
              (QStringList{QStringLiteral("upright (9x16)"), QStringLiteral("other (4x5)"), QStringLiteral("new")}));
}

TEST_F(LibraryModelTest, ProvidesRowsForVisibleCardsOnly)
{
    makeMany(300);
    show();
    const auto rows = model.cards()->rowCount();
    EXPECT_LT(rows, 30);
    for (qreal top = 0; top < model.contentHeight(); top += 333) {
        model.setViewTop(top);
        EXPECT_FALSE(shownTitles().isEmpty());
    }
    EXPECT_EQ(model.cards()->rowCount(), rows) << "scrolling inserts no rows";
}

TEST_F(LibraryModelTest, KeepsTheVisibleClipsWhenTheLibraryChanges)
{
    makeMany(100);
    show();
    model.setViewTop(2000);
    const auto visibleTitle = shownTitles().at(6);
    for (int i = 0; i < 4; ++i) {
        makeFile(QStringLiteral("Dota 2 - Newest %1.mp4").arg(i).toUtf8().constData());
    }
    reload();
    EXPECT_TRUE(shownTitles().contains(visibleTitle));
    EXPECT_GT(model.viewTop(), 2000);
}

TEST_F(LibraryModelTest, StaysAtTheTopForANewClip)
{
    makeMany(100);
    show();
    makeFile("Dota 2 - Newest.mp4");
    reload();
    EXPECT_EQ(model.viewTop(), 0);
    EXPECT_EQ(shownTitles().first(), QStringLiteral("Newest"));
}

TEST_F(LibraryModelTest, KeepsTheVisibleClipsWhenTheWidthChanges)
{
    makeMany(100);
    show();
    model.setViewTop(2000);
    const auto visibleTitle = shownTitles().at(6);
    model.setWidth(1500);
    EXPECT_TRUE(shownTitles().contains(visibleTitle));
}

TEST_F(LibraryModelTest, FilterChangeScrollsToTheTop)
{
    makeMany(100);
    show();
    model.setViewTop(2000);
    model.setSearch(QStringLiteral("nr"));
    EXPECT_EQ(model.viewTop(), 0);
}

TEST_F(LibraryModelTest, CurrentCardFollowsItsClip)
{
    makeMany(10);
    show();
    model.select(3);
    const auto path = model.currentPath();
    makeFile("Dota 2 - Newest.mp4");
    reload();
    EXPECT_EQ(model.currentPath(), path);
    EXPECT_EQ(model.currentPosition(), 4);
}

TEST_F(LibraryModelTest, NextClipBecomesCurrentWhenTheCurrentOneIsRemoved)
{
    makeMany(3);
    show();
    model.select(1);
    QFile::remove(model.currentPath());
    reload();
    EXPECT_EQ(model.currentPosition(), 1);
    EXPECT_EQ(model.currentTitle(), QStringLiteral("Nr 0002"));
    QFile::remove(model.currentPath());
    reload();
    EXPECT_EQ(model.currentPosition(), 0);
    QFile::remove(model.currentPath());
    reload();
    EXPECT_EQ(model.currentPosition(), -1);
    EXPECT_EQ(model.currentPath(), QString());
}

TEST_F(LibraryModelTest, ScrollsTheCurrentCardIntoView)
{
    makeMany(100);
    show();
    EXPECT_TRUE(model.moveCurrent(Qt::Key_End));
    EXPECT_EQ(model.currentPosition(), 99);
    EXPECT_TRUE(isCurrentFullyInView());
    for (int i = 0; i < 40; ++i) {
        model.moveCurrent(Qt::Key_Up);
        EXPECT_TRUE(isCurrentFullyInView());
    }
    EXPECT_EQ(model.currentPosition(), 0);
    EXPECT_EQ(model.viewTop(), 0) << "the day title is visible as well";
    EXPECT_FALSE(model.moveCurrent(Qt::Key_A));
}

TEST_F(LibraryModelTest, SelectsTheFirstFullyVisibleCard)
{
    makeMany(100);
    show();
    model.setViewTop(100);
    model.selectFirstInView();
    EXPECT_EQ(model.currentPosition(), 3);
}

TEST_F(LibraryModelTest, DayTitlesFollowTheClock)
{
    L10n::use(QStringLiteral("tr"));
    makeFile("Dota 2 - Ace.mp4");
    show();
    EXPECT_EQ(firstDay(), QStringLiteral("Bugün"));
    now = now.addDays(1);
    model.updateToday();
    EXPECT_EQ(firstDay(), QStringLiteral("Dün"));
    now = now.addDays(-1);
    model.updateToday();
    EXPECT_EQ(firstDay(), QStringLiteral("Bugün")) << "the clock was set back";
}

TEST_F(LibraryModelTest, DaysAndTimesFollowTheTimeZone)
{
    L10n::use(QStringLiteral("en"));
    const test::TimeZone start("UTC0");
    const QDateTime late(QDate(2026, 3, 1), QTime(23, 30), QTimeZone::utc());
    QFile file(makeFile("Dota 2 - Ace.mp4"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(late, QFileDevice::FileModificationTime);
    file.close();
    show();
    model.updateToday();
    EXPECT_EQ(firstDay(), QStringLiteral("Sunday, March 1, 2026"));
    EXPECT_EQ(firstTime(), late.toString(QStringLiteral("HH:mm")));
    const test::TimeZone east("UTC-3");
    model.updateToday();
    EXPECT_EQ(firstDay(), QStringLiteral("Monday, March 2, 2026"));
    EXPECT_TRUE(firstTime().contains(QStringLiteral("2:30"))) << firstTime().toStdString();
    L10n::use(QStringLiteral("tr"));
}

TEST_F(LibraryModelTest, PageOfClipsWithoutAGameKeepsThemWhenTheLanguageChanges)
{
    settings.setLanguage(QStringLiteral("tr"));
    makeFile("holiday.mp4");
    makeFile("Dota 2 - Ace.mp4");
    model.setIsOther(true);
    model.setGame(QStringLiteral("Diğer"));
    model.setHasGame(true);
    show();
    EXPECT_EQ(shownTitles(), QStringList{QStringLiteral("holiday")});
    settings.setLanguage(QStringLiteral("en"));
    EXPECT_EQ(model.count(), 1);
    libraryTime.settle();
    EXPECT_EQ(shownTitles(), QStringList{QStringLiteral("holiday")});
    settings.setLanguage(QStringLiteral("tr"));
}

TEST_F(LibraryModelTest, KeysDoNothingInAnEmptyLibrary)
{
    show();
    EXPECT_TRUE(model.moveCurrent(Qt::Key_Down));
    model.selectFirstInView();
    model.select(5);
    EXPECT_EQ(model.currentPosition(), -1);
    EXPECT_EQ(model.currentTitle(), QString());
}

/// A library that is arranged on a work queue.
class LargeLibraryModelTest : public LibraryModelTest {
protected:
    void SetUp() override
    {
        makeMany(static_cast<int>(ClipArranger::MaxClipsAtOnce) + 1);
        show();
        arrange();
    }

    void arrange()
    {
        work.settle();
        main.settle();
    }
};

TEST_F(LargeLibraryModelTest, IsNotLoadedBeforeItIsArranged)
{
    LibraryModel other(modelDependencies());
    EXPECT_FALSE(other.isLoaded());
    EXPECT_EQ(other.count(), 0);
    arrange();
    EXPECT_TRUE(other.isLoaded());
    EXPECT_EQ(other.count(), ClipArranger::MaxClipsAtOnce + 1);
}

TEST_F(LargeLibraryModelTest, CardsChangeTogetherWithEverythingThatDependsOnThem)
{
    model.setViewTop(2000);
    model.setSearch(QStringLiteral("0007"));
    EXPECT_EQ(model.search(), QStringLiteral("0007"));
    EXPECT_EQ(model.count(), ClipArranger::MaxClipsAtOnce + 1);
    EXPECT_EQ(model.viewTop(), 2000);
    EXPECT_FALSE(model.showsSearch());
    arrange();
    EXPECT_EQ(model.count(), 1);
    EXPECT_EQ(model.viewTop(), 0);
    EXPECT_TRUE(model.showsSearch());
}

TEST_F(LargeLibraryModelTest, EachLetterIsArrangedOnceAtMost)
{
    const QSignalSpy changed(&model, &LibraryModel::clipsChanged);
    model.setSearch(QStringLiteral("0"));
    model.setSearch(QStringLiteral("00"));
    work.settle();
    model.setSearch(QStringLiteral("000"));
    arrange();
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(model.count(), 12);
}

TEST_F(LargeLibraryModelTest, KeepsScrollPositionAndSelectionWhenTheLibraryChanges)
{
    model.setViewTop(2000);
    model.select(40);
    const auto path = model.currentPath();
    makeFile("Dota 2 - Newest.mp4");
    reload();
    EXPECT_EQ(model.currentPosition(), 40);
    arrange();
    EXPECT_EQ(model.currentPosition(), 41);
    EXPECT_EQ(model.currentPath(), path);
    EXPECT_NE(model.viewTop(), 0);
}

TEST_F(LargeLibraryModelTest, ResetsATierThatIsNotOffered)
{
    model.setTierFilter(QStringLiteral("medium"));
    const QSignalSpy changed(&model, &LibraryModel::filterChanged);
    arrange();
    EXPECT_EQ(model.tierFilter(), QStringLiteral("all"));
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(model.count(), ClipArranger::MaxClipsAtOnce + 1);
}

TEST(ScrollSpeed, IsDistanceOverTime)
{
    using namespace std::chrono_literals;
    ScrollSpeed scroll;
    const ScrollSpeed::Time start{1h};
    scroll.moveTo(0, start);
    for (int i = 1; i <= 10; ++i) {
        scroll.moveTo(i * 50, start + i * 10ms);
    }
    EXPECT_NEAR(scroll.speed(), 5000, 1);
    scroll.stop();
    EXPECT_EQ(scroll.speed(), 0);
}

TEST(ScrollSpeed, IsZeroForASingleJump)
{
    using namespace std::chrono_literals;
    ScrollSpeed scroll;
    scroll.moveTo(90'000, ScrollSpeed::Time{1h});
    EXPECT_EQ(scroll.speed(), 0);
    EXPECT_EQ(scroll.position(), 90'000);
}

} // namespace
} // namespace quelto
