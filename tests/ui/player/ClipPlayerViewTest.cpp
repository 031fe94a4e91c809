// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/player/PlayerFixture.h"

namespace quelto {
namespace {

using namespace test;

const QList<ClipMeta::Event> Moments{{.t = 1, .name = QStringLiteral("kill")}, {.t = 6, .name = QStringLiteral("ace")}};

class ClipPlayerViewTest : public PlayerFixture {
protected:
    double timeAt(const QPoint& point) const { return timeline()->mapFromScene(point).x() / timeline()->width() * 10; }
    /// Units: seconds for one pixel.
    double pixel() const { return 10 / timeline()->width(); }
    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        QTest::mouseMove(window, to);
        QTest::mouseRelease(window, Qt::LeftButton, {}, to);
    }
    QStringList texts() const
    {
        QStringList shown;
        visitVisible(window->contentItem(), [&](const QQuickItem* each) {
            if (each->inherits("QQuickText")) {
                shown.append(each->property("text").toString());
            }
        });
        return shown;
    }
};

TEST_F(ClipPlayerViewTest, HasTheKeyboardFromTheStart)
{
    showPlayer();
    press(Qt::Key_Space);
    EXPECT_FALSE(model().isPlaying());
    press(Qt::Key_Space);
    EXPECT_TRUE(model().isPlaying());
    press(Qt::Key_Right);
    EXPECT_EQ(model().time(), 5);
    press(Qt::Key_Right);
    EXPECT_EQ(model().time(), 10);
    press(Qt::Key_Left);
    EXPECT_EQ(model().time(), 5);
}

TEST_F(ClipPlayerViewTest, HeldSpaceTogglesOnce)
{
    showPlayer();
    holdKey(window, Qt::Key_Space);
    EXPECT_FALSE(model().isPlaying());
}

TEST_F(ClipPlayerViewTest, CommaAndPeriodStepOneFrame)
{
    showPlayer();
    player->frameTimes = FrameTimes({0, 0.1, 0.2, 0.3});
    press(Qt::Key_Period);
    EXPECT_FALSE(model().isPlaying());
    EXPECT_EQ(model().time(), 0.1);
    press(Qt::Key_Period);
    EXPECT_EQ(model().time(), 0.2);
    press(Qt::Key_Comma);
    EXPECT_EQ(model().time(), 0.1);
}

TEST_F(ClipPlayerViewTest, ClickOnTheVideoTogglesAndADiscMarksThePause)
{
    showPlayer();
    const auto discs = [&] {
        return firstVisible(window, [](const QQuickItem* each) {
                   return each->width() == 64 && each->property("radius").toInt() == 32;
               }) != nullptr;
    };
    EXPECT_FALSE(discs());
    QTest::mouseClick(window, Qt::LeftButton, {}, {320, 150});
    EXPECT_FALSE(model().isPlaying());
    EXPECT_TRUE(discs());
    QTest::mouseClick(window, Qt::LeftButton, {}, {320, 150});
    EXPECT_TRUE(model().isPlaying());
}

TEST_F(ClipPlayerViewTest, DragOnTheTimelineScrubs)
{
    showPlayer();
    QTest::mousePress(window, Qt::LeftButton, {}, onTimeline(2, 25));
    EXPECT_NEAR(model().time(), 2, pixel());
    EXPECT_TRUE(timeline()->property("scrubbing").toBool());
    QTest::mouseMove(window, onTimeline(7, 25));
    EXPECT_NEAR(model().time(), 7, pixel());
    QTest::mouseMove(window, onTimeline(7, 25) + QPoint(2000, 0));
    EXPECT_EQ(model().time(), 10);
    QTest::mouseRelease(window, Qt::LeftButton, {}, onTimeline(7, 25));
    EXPECT_FALSE(timeline()->property("scrubbing").toBool());
}

TEST_F(ClipPlayerViewTest, DragFromTheTopOfTheTimelineDoesNotScrub)
{
    showPlayer();
    drag(onTimeline(2, 15), onTimeline(7, 25));
    EXPECT_EQ(player->takeCalls(), QStringList());
    drag(onTimeline(2, 17), onTimeline(7, 25));
    EXPECT_NEAR(model().time(), 7, pixel());
}

TEST_F(ClipPlayerViewTest, UnknownDurationIsHarmless)
{
    showPlayer(Moments);
    model().load(QStringLiteral("/missing.mp4"));
    time.settle();
    drag(onTimeline(2, 25), onTimeline(7, 25));
    EXPECT_EQ(model().time(), 0);
    EXPECT_EQ(model().duration(), 0);
    EXPECT_TRUE(text(QStringLiteral("0:00 / 0:00")));
}

TEST_F(ClipPlayerViewTest, MarkersPlayFromTwoSecondsBefore)
{
    showPlayer(Moments);
    model().pause();
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(named(QStringLiteral("Ace • 0:06"))));
    EXPECT_EQ(model().time(), 4);
    EXPECT_TRUE(model().isPlaying());
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(named(QStringLiteral("Kill • 0:01"))));
    EXPECT_EQ(model().time(), 0);
    EXPECT_NEAR(timeAt(middleOf(named(QStringLiteral("Ace • 0:06")))), 6, pixel());
    EXPECT_TRUE(text(QStringLiteral("2 an")));
}

TEST_F(ClipPlayerViewTest, WithoutEventsNothingIsCounted)
{
    showPlayer();
    EXPECT_FALSE(texts().join(u'|').contains(QStringLiteral(" an")));
}

TEST_F(ClipPlayerViewTest, TabReachesEachControlAndEachMarker)
{
    showPlayer(Moments);
    model().startTrimming();
    QStringList names;
    for (int i = 0; i < 20; ++i) {
        press(Qt::Key_Tab);
        const auto* interface = QAccessible::queryAccessibleInterface(focused());
        const auto name = interface == nullptr ? QString() : interface->text(QAccessible::Name);
        EXPECT_FALSE(name.isEmpty());
        if (names.contains(name)) {
            break;
        }
        names.append(name);
    }
    for (const auto* name :
         {"Konum", "Kill • 0:01", "Ace • 0:06", "Kırpma başlangıcı", "Kırpma sonu", "Duraklat", "5 saniye geri",
          "5 saniye ileri", "Oynatma hızı, 1×", "Sesi kapat", "Ses düzeyi", "Tam ekran"}) {
        EXPECT_TRUE(names.contains(QString::fromUtf8(name))) << name << " is not in " << names.join(u'|').toStdString();
    }
}

TEST_F(ClipPlayerViewTest, KeysOfTheMarkersPlayThem)
{
    showPlayer(Moments);
    named(QStringLiteral("Ace • 0:06"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    EXPECT_EQ(model().time(), 4);
    named(QStringLiteral("Kill • 0:01"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_EQ(model().time(), 0);
    EXPECT_TRUE(model().isPlaying());
}

TEST_F(ClipPlayerViewTest, HandlesKeepHalfASecond)
{
    showPlayer();
    model().startTrimming();
    drag(middleOf(named(QStringLiteral("Kırpma sonu"))), onTimeline(4, 23));
    EXPECT_NEAR(model().trimOut(), 4, 2 * pixel());
    drag(middleOf(named(QStringLiteral("Kırpma başlangıcı"))), onTimeline(9, 23));
    EXPECT_NEAR(model().trimIn(), model().trimOut() - 0.5, 0.0001);
    EXPECT_EQ(model().time(), model().trimIn());
    drag(middleOf(named(QStringLiteral("Kırpma sonu"))), onTimeline(0, 23));
    EXPECT_NEAR(model().trimOut(), model().trimIn() + 0.5, 0.0001);
}

TEST_F(ClipPlayerViewTest, ArrowKeysMoveAHandle)
{
    showPlayer();
    model().startTrimming();
    named(QStringLiteral("Kırpma başlangıcı"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Right);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_NEAR(model().trimIn(), 1.1, 0.0001);
    named(QStringLiteral("Kırpma sonu"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Left);
    EXPECT_NEAR(model().trimOut(), 9.9, 0.0001);
    EXPECT_NEAR(model().time(), 9.9, 0.0001);
}

TEST_F(ClipPlayerViewTest, LabelShowsTheTimeUnderThePointer)
{
    showPlayer();
    QTest::mouseMove(window, onTimeline(7.05, 25));
    const auto* label = text(QStringLiteral("0:07"));
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->property("font").value<QFont>().pixelSize(), 9);
    QTest::mouseMove(window, onTimeline(0, 25));
    label = text(QStringLiteral("0:00"));
    ASSERT_NE(label, nullptr);
    EXPECT_NEAR(timeline()->mapFromScene(middleOf(label)).x(), 16, 1);
    QTest::mousePress(window, Qt::LeftButton, {}, onTimeline(3, 25));
    EXPECT_EQ(text(QStringLiteral("0:03")), nullptr);
    QTest::mouseRelease(window, Qt::LeftButton, {}, onTimeline(3, 25));
}

TEST_F(ClipPlayerViewTest, TimeAndDurationAreRoundedDown)
{
    showPlayer();
    player->opened(65.9);
    player->playTo(7.9);
    tick();
    EXPECT_TRUE(text(QStringLiteral("0:07 / 1:05"))) << texts().join(u'|').toStdString();
}

TEST_F(ClipPlayerViewTest, SpeedMenuMarksTheChosenSpeed)
{
    showPlayer();
    model().pause();
    player->takeCalls();
    click(named(QStringLiteral("Oynatma hızı, 1×")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return text(QStringLiteral("✓ 1×")) != nullptr; }));
    for (const auto* speed : {"0.25×", "0.5×", "1.5×", "2×"}) {
        EXPECT_TRUE(text(QString::fromUtf8(speed))) << speed;
    }
    click(text(QStringLiteral("1.5×")));
    EXPECT_EQ(player->takeCalls(), QStringList());
    EXPECT_EQ(model().rate(), 1.5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return text(QStringLiteral("0.25×")) == nullptr; }));
    click(named(QStringLiteral("Oynatma hızı, 1.5×")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return text(QStringLiteral("✓ 1.5×")) != nullptr; }));
    EXPECT_EQ(text(QStringLiteral("✓ 1×")), nullptr);
    press(Qt::Key_Escape);
    model().play();
    EXPECT_EQ(player->takeCalls(), QStringList(QStringLiteral("play 1.5")));
}

TEST_F(ClipPlayerViewTest, SecondClickOnTheSpeakerGivesTheFullVolume)
{
    showPlayer();
    model().setVolume(0.3);
    click(named(QStringLiteral("Sesi kapat")));
    EXPECT_EQ(model().volume(), 0);
    click(named(QStringLiteral("Sesi aç")));
    EXPECT_EQ(model().volume(), 1);
}

TEST_F(ClipPlayerViewTest, VolumeSliderFollowsAndSetsTheVolume)
{
    showPlayer();
    const auto* slider = named(QStringLiteral("Ses düzeyi"));
    EXPECT_EQ(slider->width(), 80);
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(slider));
    EXPECT_NEAR(model().volume(), 0.5, 0.05);
    model().setVolume(0);
    EXPECT_EQ(slider->property("value").toDouble(), 0);
}

TEST_F(ClipPlayerViewTest, VideoKeeps16To9)
{
    for (const auto size : {QSize(640, 460), QSize(900, 400), QSize(420, 700)}) {
        showPlayer({}, size);
        const auto* surface =
            firstVisible(window, [](const QQuickItem* each) { return each->inherits("quelto::VideoSurface"); });
        ASSERT_NE(surface, nullptr);
        EXPECT_NEAR(surface->width() / surface->height(), 16.0 / 9, 0.01);
        EXPECT_GE(surface->mapToScene({}).x(), 14);
        EXPECT_GE(surface->mapToScene({}).y(), 14);
        EXPECT_LE(surface->mapToScene({0, surface->height()}).y(), timeline()->mapToScene({}).y());
    }
}

TEST_F(ClipPlayerViewTest, FullScreenFillsTheScreenAndEscapeLeavesIt)
{
    showPlayer(Moments);
    click(named(QStringLiteral("Tam ekran")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::FullScreen; }));
    const auto* surface =
        firstVisible(window, [](const QQuickItem* each) { return each->inherits("quelto::VideoSurface"); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return surface->size() == QSizeF(window->size()); }));
    press(Qt::Key_Space);
    EXPECT_FALSE(model().isPlaying());
    press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::Windowed; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return surface->width() < window->width(); }));
    press(Qt::Key_Space);
    EXPECT_TRUE(model().isPlaying());
}

TEST_F(ClipPlayerViewTest, ControlsOfTheFullScreenHideAndReturn)
{
    showPlayer();
    click(named(QStringLiteral("Tam ekran")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::FullScreen; }));
    const auto* bar = timeline()->parentItem();
    EXPECT_EQ(bar->opacity(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar->opacity() == 0; }));
    QTest::mouseMove(window, {100, 100});
    QTest::mouseMove(window, {110, 100});
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar->opacity() == 1; }, 1500));
    press(Qt::Key_Escape);
}

TEST_F(ClipPlayerViewTest, FullScreenThatTheDesktopEndsIsOver)
{
    showPlayer();
    click(named(QStringLiteral("Tam ekran")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::FullScreen; }));
    window->showNormal();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !object(QStringLiteral("view"))->property("isFullScreen").toBool(); }));
    EXPECT_EQ(window->visibility(), QWindow::Windowed);
}

TEST_F(ClipPlayerViewTest, Pictures)
{
    showPlayer({{.t = 1, .name = QStringLiteral("multikill_3")},
                {.t = 1.3, .name = QStringLiteral("kill")},
                {.t = 4, .name = QStringLiteral("my_death")},
                {.t = 6, .name = QStringLiteral("steal_Baron")},
                {.t = 7, .name = QStringLiteral("something")},
                {.t = 9.8, .name = QStringLiteral("victory")}});
    player->playTo(3);
    tick();
    picture(QStringLiteral("player-playing"));
    model().startTrimming();
    model().dragTrimIn(2);
    model().dragTrimOut(8);
    model().pause();
    named(QStringLiteral("Kırpma sonu"))->forceActiveFocus(Qt::TabFocusReason);
    picture(QStringLiteral("player-trimming"));
    QTest::mouseMove(window, onTimeline(5, 25));
    picture(QStringLiteral("player-hover"));
}

} // namespace
} // namespace quelto
