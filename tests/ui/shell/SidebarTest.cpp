// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

class SidebarTest : public test::ShellFixture {
protected:
    bool isActive(const QString& name) const { return item(name)->property("active").toBool(); }
};

TEST_F(SidebarTest, EmptyLibraryShowsNoGames)
{
    EXPECT_TRUE(shows(QStringLiteral("KÜTÜPHANE")));
    EXPECT_FALSE(shows(QStringLiteral("OYUNLAR / UYGULAMALAR")));
    EXPECT_NE(item(QStringLiteral("Tüm Klipler, 0")), nullptr);
}

TEST_F(SidebarTest, UpdatesClipCounts)
{
    makeClips({"Dota 2 - a.mp4", "Dota 2 - b.mp4", "Counter - a.mp4"});
    EXPECT_TRUE(shows(QStringLiteral("OYUNLAR / UYGULAMALAR")));
    EXPECT_NE(item(QStringLiteral("Tüm Klipler, 3")), nullptr);
    const auto* first = item(QStringLiteral("Dota 2, 2"));
    const auto* second = item(QStringLiteral("Counter, 1"));
    ASSERT_TRUE(first != nullptr && second != nullptr);
    EXPECT_LT(first->mapToScene({}).y(), second->mapToScene({}).y());
}

TEST_F(SidebarTest, FocusStaysOnAGameThatMoves)
{
    makeClips({"Dota 2 - a.mp4", "Dota 2 - b.mp4", "Counter - a.mp4"});
    auto* counter = item(QStringLiteral("Counter, 1"));
    ASSERT_NE(counter, nullptr);
    counter->forceActiveFocus(Qt::TabFocusReason);
    makeClips({"Counter - b.mp4", "Counter - c.mp4"});
    EXPECT_EQ(item(QStringLiteral("Counter, 3")), counter);
    EXPECT_TRUE(counter->hasActiveFocus());
    EXPECT_LT(counter->mapToScene({}).y(), item(QStringLiteral("Dota 2, 2"))->mapToScene({}).y());
}

TEST_F(SidebarTest, HighlightsTheRowOfThePage)
{
    makeClips({"Dota 2 - a.mp4"});
    const auto all = QStringLiteral("Tüm Klipler, 1");
    const auto game = QStringLiteral("Dota 2, 1");
    const auto matchRow = QStringLiteral("Maç Özetleri, 0");
    const auto settingsRow = QStringLiteral("Ayarlar");
    const QStringList rows{all, game, matchRow, settingsRow};
    const auto activeRows = [&] {
        QStringList active;
        std::ranges::copy_if(rows, std::back_inserter(active), [&](const auto& each) { return isActive(each); });
        return active;
    };
    EXPECT_EQ(activeRows(), QStringList{all});
    click(game);
    EXPECT_EQ(activeRows(), QStringList{game});
    EXPECT_EQ(navigation->page(), Page{.game = QStringLiteral("Dota 2")});
    click(matchRow);
    EXPECT_EQ(activeRows(), QStringList{matchRow});
    navigation->setPage({.kind = Pages::Kind::Match, .match = QUuid::createUuid()});
    EXPECT_EQ(activeRows(), QStringList{matchRow});
    navigation->setPage({.kind = Pages::Kind::Review, .match = QUuid::createUuid()});
    EXPECT_EQ(activeRows(), QStringList()) << "a review has no row";
    click(settingsRow);
    EXPECT_EQ(activeRows(), QStringList{settingsRow});
    click(all);
    navigation->openClip(library->clips().first().path);
    EXPECT_EQ(activeRows(), QStringList()) << "an open clip has no row";
    click(all);
    EXPECT_FALSE(navigation->hasSelected());
    EXPECT_EQ(activeRows(), QStringList{all});
}

TEST_F(SidebarTest, HasDesignedSizesAndFontWeights)
{
    auto* sidebar = item(QStringLiteral("Quelto"));
    ASSERT_NE(sidebar, nullptr);
    EXPECT_EQ(sidebar->width(), 240);
    const auto* all = item(QStringLiteral("Tüm Klipler, 0"));
    EXPECT_EQ(all->mapToScene({}).x(), 10);
    EXPECT_EQ(all->width(), 220);
    EXPECT_EQ(test::colorOf(textItem(QStringLiteral("Tüm Klipler"))), theme->text());
    EXPECT_EQ(test::fontOf(textItem(QStringLiteral("Tüm Klipler"))).weight(), QFont::DemiBold);
    EXPECT_EQ(test::colorOf(textItem(QStringLiteral("Maç Özetleri"))), theme->muted());
    EXPECT_EQ(test::fontOf(textItem(QStringLiteral("Maç Özetleri"))).weight(), QFont::Medium);
    EXPECT_EQ(test::colorOf(textItem(QStringLiteral("KÜTÜPHANE"))), theme->dim());
    const auto name = test::fontOf(textItem(QStringLiteral("QUELTO")));
    EXPECT_EQ(name.pixelSize(), 15);
    EXPECT_EQ(name.weight(), QFont::Black);
    EXPECT_EQ(name.letterSpacing(), 1.5);
    EXPECT_EQ(textItem(QStringLiteral("QUELTO"))->mapToScene({}).x(), 18 + 30 + 12);
}

TEST_F(SidebarTest, ScrollsToTheFocusedGame)
{
    QList<QByteArray> names;
    for (char each = 'a'; each <= 'z'; ++each) {
        names.append(QByteArray("Game ") + each + " - clip.mp4");
    }
    makeClips({names.cbegin(), names.cend()});
    const auto* card = item(QStringLiteral("Klip Kaydet"));
    window->requestActivate();
    item(QStringLiteral("Tüm Klipler, 26"))->forceActiveFocus(Qt::TabFocusReason);
    for (int i = 0; i < 27; ++i) {
        QTest::keyClick(window, Qt::Key_Down);
    }
    const auto* last = item(QStringLiteral("Game z, 1"));
    ASSERT_NE(last, nullptr);
    EXPECT_TRUE(last->hasActiveFocus());
    EXPECT_LT(last->mapToScene({}).y() + last->height(), card->mapToScene({}).y());
    picture(QStringLiteral("sidebar-many-games"));
    for (int i = 0; i < 27; ++i) {
        QTest::keyClick(window, Qt::Key_Up);
    }
    EXPECT_TRUE(item(QStringLiteral("Tüm Klipler, 26"))->hasActiveFocus());
}

TEST_F(SidebarTest, CreatesRowsOnlyForVisibleGames)
{
    QList<QByteArray> names;
    for (int i = 0; i < 300; ++i) {
        names.append("Artist " + QByteArray::number(i) + " - song.mp4");
    }
    makeClips(names);
    drawFrame();
    int rows = 0;
    test::visitVisible(window->contentItem(), [&](const QQuickItem* each) {
        rows += QByteArray(each->metaObject()->className()).startsWith("GameRow_QMLTYPE") ? 1 : 0;
    });
    EXPECT_GT(rows, 10);
    EXPECT_LT(rows, 60);
}

TEST_F(SidebarTest, GameNameWithALineBreakTakesOneLine)
{
    makeClips({"Two\nLines - a.mp4", "Dota 2 - a.mp4"});
    EXPECT_EQ(item(QStringLiteral("Two\nLines, 1"))->height(), item(QStringLiteral("Dota 2, 1"))->height());
}

TEST_F(SidebarTest, ShowsARowForAnAvailableUpdate)
{
    auto* sidebar = item(QStringLiteral("Quelto"));
    ASSERT_NE(sidebar, nullptr);
    const QSignalSpy requested(sidebar, SIGNAL(updateRequested()));
    EXPECT_FALSE(shows(QStringLiteral("Güncelleme var: 2.0")));
    sidebar->setProperty("availableUpdate", QStringLiteral("2.0"));
    drawFrame();
    picture(QStringLiteral("sidebar-update"));
    click(QStringLiteral("Güncelleme var: 2.0"));
    EXPECT_EQ(requested.size(), 1);
}

} // namespace
} // namespace quelto
