// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ScreenReader.h"

#include "tests/ui/shell/ReviewFixture.h"

namespace quelto {
namespace {

using ReviewKeyboardTest = test::ReviewFixture;

TEST_F(ReviewKeyboardTest, UpperCaseAndXAnswerToo)
{
    open({Ace, Solo, Named});
    type('D');
    type('x');
    expectCounts(1, 2);
    click(QStringLiteral("Önceki klip"));
    click(QStringLiteral("Önceki klip"));
    type('K');
    type('X');
    expectCounts(2, 1);
}

TEST_F(ReviewKeyboardTest, EveryRepeatOfAHeldKeyCounts)
{
    QList<QByteArray> clips;
    for (int i = 0; i < 30; ++i) {
        clips.append("League of Legends - clip " + QByteArray::number(i) + ".mp4");
    }
    open(clips);
    for (int i = 0; i < 12; ++i) {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_K, {}, QStringLiteral("k"), i > 0);
        QCoreApplication::sendEvent(window, &held);
        EXPECT_TRUE(held.isAccepted());
    }
    EXPECT_TRUE(shows(QStringLiteral("13 / 30"))) << "while the clips load";
    EXPECT_EQ(playingCount(), 1);
}

TEST_F(ReviewKeyboardTest, ClickOnAnAnswerLeavesTheKeyboardWithThePlayer)
{
    open({Ace, Solo, Named});
    for (const auto* name : {"Sil", "Tut", "Önceki klip", "Sonraki klip"}) {
        click(QString::fromUtf8(name));
        EXPECT_EQ(focusedName(), QStringLiteral("Klip oynatıcı")) << name;
    }
    expectCounts(2, 1);
}

TEST_F(ReviewKeyboardTest, OnlyTheKeyboardIsNeeded)
{
    open({Ace, Solo});
    EXPECT_EQ(focusedName(), QStringLiteral("Klip oynatıcı"));
    type('d');
    type('k');
    press(Qt::Key_Return);
    EXPECT_EQ(focusedName(), QStringLiteral("Kaydet ve 1 klibi sil"));
    EXPECT_EQ(trash.calls, 0);
    press(Qt::Key_Return);
    EXPECT_EQ(trash.recycled, QStringList(pathOf(Ace)));
}

TEST_F(ReviewKeyboardTest, PlayerKeysStayWithThePlayer)
{
    open({Ace, Solo});
    players.at(0)->takeCalls();
    press(Qt::Key_Space);
    press(Qt::Key_Right);
    EXPECT_EQ(players.at(0)->takeCalls(), QStringList({QStringLiteral("pause"), QStringLiteral("seek 5")}));
    press(Qt::Key_D, Qt::ControlModifier);
    expectCounts(2, 0);
}

TEST_F(ReviewKeyboardTest, KeysWorkInFullScreen)
{
    open({Ace, Solo, Named});
    click(QStringLiteral("Tam ekran"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::FullScreen; }));
    type('d');
    press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::Windowed; }));
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Review) << "Escape leaves the full screen first";
    EXPECT_TRUE(shows(QStringLiteral("2 / 3")));
    expectCounts(2, 1);
}

TEST_F(ReviewKeyboardTest, ArrowKeysMoveInTheFilmstrip)
{
    open({Ace, Solo, Named});
    item(QStringLiteral("Klipler"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Right);
    EXPECT_TRUE(shows(QStringLiteral("2 / 3")));
    press(Qt::Key_End);
    EXPECT_TRUE(shows(QStringLiteral("3 / 3")));
    press(Qt::Key_Right);
    press(Qt::Key_Left);
    EXPECT_TRUE(shows(QStringLiteral("2 / 3")));
    press(Qt::Key_Home);
    EXPECT_TRUE(shows(QStringLiteral("1 / 3")));
    type('d');
    expectCounts(2, 1);
}

TEST_F(ReviewKeyboardTest, HeldEscapeLeavesOnlyTheFullScreen)
{
    open({Ace, Solo});
    click(QStringLiteral("Tam ekran"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::FullScreen; }));
    press(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::Windowed; }));
    hold(Qt::Key_Escape);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Review);
}

TEST_F(ReviewKeyboardTest, HeldEnterStaysWithThePlayer)
{
    open({Ace, Solo});
    hold(Qt::Key_Return);
    EXPECT_EQ(focusedName(), QStringLiteral("Klip oynatıcı"));
}

TEST_F(ReviewKeyboardTest, ScreenReadersHearEachAnswer)
{
    QStringList heard;
    auto* const reader = engine->singletonInstance<ScreenReader*>(qmlTypeId("Quelto.Library", 1, 0, "ScreenReader"));
    ASSERT_NE(reader, nullptr);
    reader->setSend(
        [&](QAccessibleEvent* event) { heard.append(event->accessibleInterface()->text(QAccessible::Name)); });
    const auto takeHeard = [&] {
        QTest::qWait(1);
        return std::exchange(heard, {});
    };
    open({Ace, Solo});
    takeHeard();
    type('d');
    EXPECT_EQ(takeHeard(), QStringList(QStringLiteral("2 / 2, Solo Kill, kalacak")));
    type('d');
    EXPECT_EQ(takeHeard(), QStringList(QStringLiteral("2 / 2, Solo Kill, silinecek")));
    item(QStringLiteral("Klipler"))->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_EQ(takeHeard(), QStringList(QStringLiteral("2 / 2, Solo Kill, silinecek")));
    press(Qt::Key_Tab);
    matches->gameStarted(QStringLiteral("Dota 2"), QStringLiteral("Zeus"));
    EXPECT_EQ(takeHeard(), QStringList()) << "the focus is elsewhere, and another match changed";
}

TEST_F(ReviewKeyboardTest, FocusOfADisabledButtonGoesToThePlayer)
{
    open({Ace, Solo});
    auto* const next = item(QStringLiteral("Sonraki klip"));
    next->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return focusedName() == QStringLiteral("Klip oynatıcı"); }));
}

TEST_F(ReviewKeyboardTest, TakesTheKeyboardFromTheSidebar)
{
    match = playMatch({Ace, Solo, Named});
    item(QStringLiteral("Tüm Klipler, 3"))->forceActiveFocus(Qt::TabFocusReason);
    navigation->setPage({.kind = Pages::Kind::Review, .match = match});
    settleReview();
    EXPECT_EQ(focusedName(), QStringLiteral("Klip oynatıcı"));
    type('d');
    expectCounts(2, 1);
}

TEST_F(ReviewKeyboardTest, TakesTheKeyboardFromTheSidebarOfAHiddenWindow)
{
    match = playMatch({Ace, Solo, Named});
    item(QStringLiteral("Tüm Klipler, 3"))->forceActiveFocus(Qt::TabFocusReason);
    window->hide();
    navigation->setPage({.kind = Pages::Kind::Review, .match = match});
    window->show();
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    settleReview();
    type('d');
    expectCounts(2, 1);
}

} // namespace
} // namespace quelto
