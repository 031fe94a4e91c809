// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/shell/ReviewFixture.h"

namespace quelto {
namespace {

using ReviewViewTest = test::ReviewFixture;

TEST_F(ReviewViewTest, PlaysTheOldestClipAndShowsItsPlace)
{
    open({Ace, Solo, Named});
    EXPECT_TRUE(shows(QStringLiteral("1 / 3")));
    EXPECT_TRUE(shows(QStringLiteral("Ace")));
    EXPECT_TRUE(item(QStringLiteral("Efsane 95")));
    expectCounts(3, 0);
    EXPECT_TRUE(shows(QStringLiteral("Hepsi kalacak. Beğenmediklerini D ile işaretle.")));
    EXPECT_TRUE(item(QStringLiteral("Bitti")));
    ASSERT_EQ(players.size(), 2);
    EXPECT_EQ(players.at(0)->takeCalls(),
              QStringList({QStringLiteral("open ") + pathOf(Ace), QStringLiteral("play 1")}));
    EXPECT_EQ(players.at(1)->takeCalls().last(), QStringLiteral("open ") + pathOf(Solo)) << "opened ahead";
}

TEST_F(ReviewViewTest, KeysAnswerAndTheFollowingClipPlaysAtOnce)
{
    open({Ace, Solo, Named});
    players.at(0)->takeCalls();
    players.at(1)->takeCalls();
    type('d');
    EXPECT_TRUE(shows(QStringLiteral("2 / 3")));
    EXPECT_TRUE(shows(QStringLiteral("Solo Kill")));
    EXPECT_EQ(players.at(1)->takeCalls().first(), QStringLiteral("play 1")) << "the file is open already";
    EXPECT_EQ(playingCount(), 1);
    settleReview();
    expectCounts(2, 1);
    EXPECT_TRUE(shows(QStringLiteral("Silinenler Çöp Kutusu'na gider, oradan geri alınabilir.")));
    EXPECT_TRUE(item(QStringLiteral("Kaydet ve 1 klibi sil")));
    type('k');
    EXPECT_TRUE(shows(QStringLiteral("3 / 3")));
    EXPECT_EQ(trash.calls, 0);
}

TEST_F(ReviewViewTest, DeletingTheLastClipStaysThere)
{
    open({Ace, Solo});
    click(QStringLiteral("Sonraki klip"));
    type('d');
    EXPECT_TRUE(shows(QStringLiteral("2 / 2")));
    expectCounts(1, 1);
    EXPECT_TRUE(item(QStringLiteral("Silinecek")));
    auto* const title = textItem(QStringLiteral("Solo Kill"));
    ASSERT_NE(title, nullptr);
    EXPECT_TRUE(title->property("font").value<QFont>().strikeOut());
}

TEST_F(ReviewViewTest, TakesBackAMark)
{
    open({Ace, Solo});
    type('d');
    click(QStringLiteral("Önceki klip"));
    EXPECT_TRUE(item(QStringLiteral("Silinecek")));
    type('k');
    expectCounts(2, 0);
    click(QStringLiteral("Önceki klip"));
    EXPECT_TRUE(item(QStringLiteral("Sil")));
}

TEST_F(ReviewViewTest, OneClipHasNoNeighbours)
{
    open({Ace});
    EXPECT_TRUE(shows(QStringLiteral("1 / 1")));
    EXPECT_FALSE(isEnabled("Önceki klip"));
    EXPECT_FALSE(isEnabled("Sonraki klip"));
    EXPECT_EQ(players.size(), 1) << "nothing to open ahead";
}

TEST_F(ReviewViewTest, ButtonsAndFilmstripChangeTheClip)
{
    open({Ace, Solo, Named});
    EXPECT_FALSE(isEnabled("Önceki klip"));
    click(QStringLiteral("3 / 3, Best of all, kalacak"));
    EXPECT_TRUE(shows(QStringLiteral("3 / 3")));
    EXPECT_FALSE(isEnabled("Sonraki klip"));
    click(QStringLiteral("Sil"));
    EXPECT_TRUE(item(QStringLiteral("3 / 3, Best of all, silinecek")));
    click(QStringLiteral("Tut"));
    EXPECT_TRUE(item(QStringLiteral("3 / 3, Best of all, kalacak")));
}

TEST_F(ReviewViewTest, FinalButtonTrashesTheMarkedClips)
{
    open({Ace, Solo, Named});
    type('d');
    type('k');
    type('d');
    EXPECT_EQ(trash.calls, 0);
    const auto all = players;
    click(QStringLiteral("Kaydet ve 2 klibi sil"));
    EXPECT_EQ(trash.recycled, QStringList({pathOf(Ace), pathOf(Named)}));
    EXPECT_EQ(navigation->page(), (Page{.kind = Pages::Kind::Match, .match = match}));
}

TEST_F(ReviewViewTest, FinalButtonReleasesTheFilesFirst)
{
    open({Ace, Solo});
    type('d');
    settleReview();
    QStringList calls;
    QObject::connect(matches.get(), &MatchTracker::sessionsChanged, window, [&] {
        for (const auto& each : players) {
            calls += each->takeCalls().last();
        }
    });
    click(QStringLiteral("Kaydet ve 1 klibi sil"));
    EXPECT_EQ(calls, QStringList({QStringLiteral("close"), QStringLiteral("close")}));
}

TEST_F(ReviewViewTest, FinalButtonWithoutMarksDeletesNothing)
{
    open({Ace, Solo});
    const QSignalSpy changed(matches.get(), &MatchTracker::sessionsChanged);
    click(QStringLiteral("Bitti"));
    EXPECT_EQ(trash.calls, 0);
    EXPECT_EQ(changed.size(), 0);
    EXPECT_EQ(navigation->page(), (Page{.kind = Pages::Kind::Match, .match = match}));
}

TEST_F(ReviewViewTest, LeavingForgetsTheMarks)
{
    open({Ace, Solo});
    type('d');
    press(Qt::Key_Escape);
    EXPECT_EQ(navigation->page(), (Page{.kind = Pages::Kind::Match, .match = match}));
    EXPECT_EQ(trash.calls, 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(std::ranges::all_of(players, [](const auto& each) { return each.isNull(); }));
    navigation->setPage({.kind = Pages::Kind::Review, .match = match});
    settleReview();
    expectCounts(2, 0);
    click(QStringLiteral("Maç Özeti"));
    EXPECT_EQ(navigation->page(), (Page{.kind = Pages::Kind::Match, .match = match}));
}

TEST_F(ReviewViewTest, ListOfMatchesFollowsTheDeletionOfTheMatch)
{
    open({Ace, Solo});
    matches->deleteSession(match, MatchTracker::WithClips::no);
    EXPECT_EQ(navigation->page(), Page{.kind = Pages::Kind::Matches});
}

TEST_F(ReviewViewTest, PlaysWhenItsWindowComesBack)
{
    match = playMatch({Ace, Solo});
    window->hide();
    navigation->setPage({.kind = Pages::Kind::Review, .match = match});
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    settleReview();
    EXPECT_EQ(playingCount(), 1);
    EXPECT_EQ(focusedName(), QStringLiteral("Klip oynatıcı"));
    window->hide();
    EXPECT_EQ(playingCount(), 0);
}

TEST_F(ReviewViewTest, UnknownMatchIsEmptyAndHasNoPlayer)
{
    navigation->setPage({.kind = Pages::Kind::Review, .match = QUuid::createUuid()});
    drawFrame();
    EXPECT_FALSE(shows(QStringLiteral("Bu maçta klip kalmadı."))) << "the matches are not loaded yet";
    settleReview();
    EXPECT_TRUE(shows(QStringLiteral("Bu maçta klip kalmadı.")));
    EXPECT_TRUE(shows(QStringLiteral("Silinenler Çöp Kutusu'na gider, oradan geri alınabilir.")));
    EXPECT_FALSE(shows(QStringLiteral("Bitti")));
    EXPECT_TRUE(players.isEmpty());
    type('d');
    EXPECT_FALSE(picture(QStringLiteral("review-empty")).isNull());
}

TEST_F(ReviewViewTest, ClipThatVanishesLeavesTheReview)
{
    open({Ace, Solo, Named});
    type('d');
    settleReview();
    QFile::remove(pathOf(Ace));
    reloadLibrary();
    settleReview();
    EXPECT_TRUE(shows(QStringLiteral("1 / 2")));
    EXPECT_TRUE(shows(QStringLiteral("Solo Kill")));
    expectCounts(2, 0);
    for (const auto& each : {Solo, Named}) {
        QFile::remove(pathOf(each));
    }
    reloadLibrary();
    settleReview();
    EXPECT_TRUE(shows(QStringLiteral("Bu maçta klip kalmadı.")));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(playingCount(), 0);
    EXPECT_TRUE(matches->session(match)) << "the recap stays";
}

TEST_F(ReviewViewTest, OnlyVisibleFramesOfALongMatchExist)
{
    QList<QByteArray> clips;
    for (int i = 0; i < 200; ++i) {
        clips.append("League of Legends - clip " + QByteArray::number(i) + ".mp4");
    }
    open(clips);
    int frames = 0;
    test::visitVisible(window->contentItem(), [&](const QQuickItem* each) {
        frames += QString::fromLatin1(each->metaObject()->className()).startsWith(QStringLiteral("FilmstripFrame"));
    });
    EXPECT_GT(frames, 4);
    EXPECT_LT(frames, 30);
    press(Qt::Key_Return);
    item(QStringLiteral("Klipler"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_End);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        drawFrame();
        return test::itemNamed(window, QStringLiteral("200 / 200, clip 199, kalacak")) != nullptr;
    })) << "scrolls to the current one";
}

TEST_F(ReviewViewTest, FilmstripKeepsTheShownClipInViewWhenTheWindowShrinks)
{
    QList<QByteArray> clips;
    for (int i = 0; i < 12; ++i) {
        clips.append("League of Legends - clip " + QByteArray::number(i) + ".mp4");
    }
    window->resize(1900, 780);
    open(clips);
    for (int i = 0; i < 8; ++i) {
        type('k');
    }
    const auto* const strip = item(QStringLiteral("Klipler"));
    const auto isInView = [&] {
        drawFrame();
        const auto* const frame = test::itemNamed(window, QStringLiteral("9 / 12, clip 8, kalacak"));
        return frame != nullptr && frame->isVisible() &&
            strip->mapRectToScene(strip->boundingRect())
                .contains(frame->mapRectToScene(frame->boundingRect()).adjusted(1, 1, -1, -1));
    };
    ASSERT_TRUE(QTest::qWaitFor(isInView));
    ASSERT_GE(strip->width(), 1432) << "all frames fit, so nothing was scrolled";
    window->resize(1020, 700);
    ASSERT_TRUE(QTest::qWaitFor([&] { return strip->width() < 800; }));
    EXPECT_TRUE(QTest::qWaitFor(isInView));
}

} // namespace
} // namespace quelto
