// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/player/ClipSequencePlayer.h"
#include "ui/player/PlayerSurface.h"

#include "tests/ui/player/PlayerFixture.h"

#include <algorithm>

namespace quelto {
namespace {

using namespace test;

/// The view with a sequence of clips, and a page that takes some keys.
class SequenceViewTest : public PlayerFixture {
protected:
    void showSequence()
    {
        show(QStringLiteral("Item { id: page; objectName: 'page'; property string keys\n"
                            "    Keys.onPressed: event => {\n"
                            "        event.accepted = event.key === Qt.Key_D;\n"
                            "        keys += event.text;\n"
                            "    }\n"
                            "}\n"
                            "ClipSequencePlayer { id: sequence; objectName: 'sequence' }\n"
                            "ClipPlayerView {\n"
                            "    objectName: 'view'; anchors.fill: parent; focus: true\n"
                            "    model: sequence.current; players: sequence.players; keyReceiver: page\n"
                            "}"),
             {640, 460});
        sequence().show(QStringLiteral("/1.mp4"));
        sequence().setFollowing(QStringLiteral("/2.mp4"));
        surfacesBefore = surfaces();
        players.at(0)->opened(10);
        players.at(1)->opened(20);
    }
    ClipSequencePlayer& sequence() const
    {
        return *qobject_cast<ClipSequencePlayer*>(object(QStringLiteral("sequence")));
    }
    QList<PlayerSurface*> surfaces() const
    {
        QList<PlayerSurface*> found;
        visitVisible(window->contentItem(), [&](QQuickItem* each) {
            if (auto* surface = qobject_cast<PlayerSurface*>(each)) {
                found.append(surface);
            }
        });
        return found;
    }
    /// The one that covers the others.
    ClipPlayer* inFront() const
    {
        const auto all = surfaces();
        return (*std::ranges::max_element(all, {}, &QQuickItem::z))->model();
    }
    QString keysOfThePage() const { return read(QStringLiteral("page"), "keys").toString(); }

    QList<PlayerSurface*> surfacesBefore;
};

TEST_F(SequenceViewTest, EachPlayerKeepsItsSurface)
{
    showSequence();
    ASSERT_EQ(surfacesBefore.size(), 1);
    const auto all = surfaces();
    ASSERT_EQ(all.size(), 2);
    EXPECT_TRUE(all.contains(surfacesBefore.first()));
    const auto models = [&] { return QList{all.at(0)->model(), all.at(1)->model()}; };
    const auto before = models();
    EXPECT_NE(before.at(0), before.at(1));
    sequence().show(QStringLiteral("/2.mp4"));
    EXPECT_EQ(surfaces(), all);
    EXPECT_EQ(models(), before);
}

TEST_F(SequenceViewTest, SurfacesCoverEachOtherAndTheCurrentOneIsInFront)
{
    showSequence();
    EXPECT_EQ(inFront(), sequence().current());
    sequence().show(QStringLiteral("/2.mp4"));
    EXPECT_EQ(inFront(), sequence().current());
    const auto all = surfaces();
    const auto place = [](const QQuickItem* each) { return each->mapRectToScene(each->boundingRect()); };
    EXPECT_EQ(place(all.at(0)), place(all.at(1)));
    EXPECT_GT(place(all.at(0)).width(), 300);
    click(named(QStringLiteral("Tam ekran")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return place(surfaces().first()) == QRectF({}, window->size()); }));
    EXPECT_EQ(place(all.at(0)), place(all.at(1)));
    EXPECT_EQ(surfaces().size(), 2);
    press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::Windowed; }));
}

TEST_F(SequenceViewTest, TimelineAndControlsFollowTheCurrentClip)
{
    showSequence();
    EXPECT_TRUE(text(QStringLiteral("0:00 / 0:10")));
    sequence().show(QStringLiteral("/2.mp4"));
    EXPECT_TRUE(text(QStringLiteral("0:00 / 0:20")));
    press(Qt::Key_Right);
    EXPECT_EQ(sequence().current()->time(), 5);
    EXPECT_TRUE(text(QStringLiteral("0:05 / 0:20")));
    press(Qt::Key_Space);
    EXPECT_FALSE(sequence().current()->isPlaying());
}

TEST_F(SequenceViewTest, HiddenWindowPausesTheCurrentClip)
{
    showSequence();
    sequence().show(QStringLiteral("/2.mp4"));
    EXPECT_TRUE(sequence().current()->isPlaying());
    window->hide();
    EXPECT_FALSE(sequence().current()->isPlaying());
}

TEST_F(SequenceViewTest, PageTakesItsKeysAndLeavesTheOthersToThePlayer)
{
    showSequence();
    press(Qt::Key_D);
    EXPECT_EQ(keysOfThePage(), QStringLiteral("d"));
    press(Qt::Key_Space);
    EXPECT_FALSE(sequence().current()->isPlaying());
    EXPECT_EQ(keysOfThePage(), QStringLiteral("d "));
}

TEST_F(SequenceViewTest, PageTakesItsKeysInFullScreen)
{
    showSequence();
    click(named(QStringLiteral("Tam ekran")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::FullScreen; }));
    press(Qt::Key_D);
    EXPECT_EQ(keysOfThePage(), QStringLiteral("d"));
    press(Qt::Key_Space);
    EXPECT_FALSE(sequence().current()->isPlaying());
    press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::Windowed; }));
    press(Qt::Key_D);
    EXPECT_EQ(keysOfThePage().count(u'd'), 2);
}

} // namespace
} // namespace quelto
