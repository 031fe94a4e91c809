// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

class SidebarTest : public test::ShellFixture {
protected:
    bool isActive(const QString& name) const { return item(name)->property("active").toBool(); }

    /// Adds a clip for each of 26 games, "Game a" to "Game z". They do not fit the sidebar.
    void makeManyGames()
    {
        QList<QByteArray> names;
        for (char each = 'a'; each <= 'z'; ++each) {
            names.append(QByteArray("Game ") + each + " - clip.mp4");
        }
        makeClips(names);
    }

    /// The list of the games.
    QQuickItem* games() const
    {
        return test::firstVisible(window, [](const QQuickItem* each) { return each->inherits("QQuickListView"); });
    }
    void scrollTo(double contentY) const
    {
        games()->setProperty("contentY", contentY);
        drawFrame();
    }
    double contentY() const { return games()->property("contentY").toDouble(); }
    /// The part of the window in which the games scroll.
    QRectF listArea() const { return test::placeOf(games()); }
    bool isInListArea(const QString& name) const { return listArea().contains(test::placeOf(item(name))); }
    bool hasFocus(const QString& name) const { return item(name)->hasActiveFocus(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window, key, modifiers);
        drawFrame();
    }
    double fadeAt(double y) const
    {
        const auto* fade = test::firstVisible(window, [&](const QQuickItem* each) {
            return QByteArray(each->metaObject()->className()).startsWith("EdgeFade_QMLTYPE") &&
                test::placeOf(each).contains(QPointF(100, y));
        });
        return fade == nullptr ? 0 : fade->opacity();
    }
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

TEST_F(SidebarTest, RowOfClipsWithoutAGameStaysMarkedWhileTheLanguageChanges)
{
    makeClips({"holiday.mp4"});
    click(QStringLiteral("Diğer, 1"));
    ASSERT_TRUE(isActive(QStringLiteral("Diğer, 1")));
    settings.setLanguage(QStringLiteral("en"));
    drawFrame();
    EXPECT_TRUE(isActive(QStringLiteral("Diğer, 1"))) << "the library has not read the names again";
    time.settle();
    drawFrame();
    EXPECT_TRUE(isActive(QStringLiteral("Other, 1")));
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
    makeManyGames();
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

TEST_F(SidebarTest, StartsAtItsTop)
{
    const auto topOf = [this](const QString& name) { return test::placeOf(item(name)).top(); };
    const auto clips = topOf(QStringLiteral("Tüm Klipler, 0"));
    const auto recaps = topOf(QStringLiteral("Maç Özetleri, 0"));
    makeManyGames();
    EXPECT_EQ(topOf(QStringLiteral("Tüm Klipler, 26")), clips);
    EXPECT_EQ(topOf(QStringLiteral("Maç Özetleri, 0")), recaps);
    settings.setColorTheme(QStringLiteral("ocean"));
    drawFrame();
    EXPECT_EQ(topOf(QStringLiteral("Tüm Klipler, 26")), clips) << "after a change of theme";
    settings.setLanguage(QStringLiteral("en"));
    drawFrame();
    EXPECT_EQ(topOf(QStringLiteral("All Clips, 26")), clips) << "after a change of language";
    EXPECT_EQ(topOf(QStringLiteral("Match Recaps, 0")), recaps);
    picture(QStringLiteral("sidebar-top"));
}

TEST_F(SidebarTest, StartsAtItsTopAgainAfterItWasEmpty)
{
    const auto clips = test::placeOf(item(QStringLiteral("Tüm Klipler, 0")));
    makeManyGames();
    scrollTo(200);
    ASSERT_TRUE(QDir(settings.saveFolder()).removeRecursively());
    reloadLibrary();
    EXPECT_EQ(test::placeOf(item(QStringLiteral("Tüm Klipler, 0"))), clips);
    makeManyGames();
    EXPECT_EQ(test::placeOf(item(QStringLiteral("Tüm Klipler, 26"))), clips);
}

TEST_F(SidebarTest, GamesAreOneTabStop)
{
    makeManyGames();
    record();
    window->requestActivate();
    item(QStringLiteral("Tüm Klipler, 26"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(QStringLiteral("Maç Özetleri, 0")));
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(QStringLiteral("Game a, 1")));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_TRUE(hasFocus(QStringLiteral("Game c, 1")));
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(QStringLiteral("Kaydı Başlat / Durdur")));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(hasFocus(QStringLiteral("Game c, 1"))) << "the focus returns to the game that had it";
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(hasFocus(QStringLiteral("Maç Özetleri, 0")));
}

TEST_F(SidebarTest, TabStopIsTheGameWhosePageIsOpen)
{
    makeManyGames();
    window->requestActivate();
    click(QStringLiteral("Game d, 1"));
    item(QStringLiteral("Maç Özetleri, 0"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(QStringLiteral("Game d, 1")));
}

TEST_F(SidebarTest, HomeAndEndReachTheFirstAndTheLastGame)
{
    makeManyGames();
    window->requestActivate();
    item(QStringLiteral("Game c, 1"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_End);
    EXPECT_TRUE(hasFocus(QStringLiteral("Game z, 1")));
    EXPECT_TRUE(isInListArea(QStringLiteral("Game z, 1")));
    press(Qt::Key_Home);
    EXPECT_TRUE(hasFocus(QStringLiteral("Game a, 1")));
    EXPECT_TRUE(isInListArea(QStringLiteral("Game a, 1")));
}

TEST_F(SidebarTest, FocusedRowIsScrolledIntoView)
{
    makeManyGames();
    window->requestActivate();
    scrollTo(300);
    EXPECT_FALSE(isInListArea(QStringLiteral("Maç Özetleri, 0")));
    item(QStringLiteral("Tüm Klipler, 26"))->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(isInListArea(QStringLiteral("Tüm Klipler, 26")));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_End);
    scrollTo(0);
    item(QStringLiteral("Maç Özetleri, 0"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(QStringLiteral("Game z, 1")));
    EXPECT_TRUE(isInListArea(QStringLiteral("Game z, 1")));
    EXPECT_EQ(fadeAt(listArea().bottom() - 1), 0);
}

TEST_F(SidebarTest, EveryFocusedGameIsClearOfTheFadingEdges)
{
    makeManyGames();
    window->requestActivate();
    item(QStringLiteral("Game a, 1"))->forceActiveFocus(Qt::TabFocusReason);
    const auto check = [&] {
        const auto row = test::placeOf(window->activeFocusItem());
        EXPECT_TRUE(listArea().contains(row));
        EXPECT_EQ(fadeAt(row.top() + 1), 0);
        EXPECT_EQ(fadeAt(row.bottom() - 1), 0);
    };
    for (int i = 0; i < 25; ++i) {
        press(Qt::Key_Down);
        check();
    }
    for (int i = 0; i < 27; ++i) {
        press(Qt::Key_Up);
        check();
    }
}

TEST_F(SidebarTest, EdgesFadeWhereTheListContinues)
{
    makeManyGames();
    const auto upper = listArea().top() + 1;
    const auto lower = listArea().bottom() - 1;
    EXPECT_EQ(fadeAt(upper), 0);
    EXPECT_EQ(fadeAt(lower), 1);
    scrollTo(contentY() + 100);
    picture(QStringLiteral("sidebar-middle"));
    EXPECT_EQ(fadeAt(upper), 1);
    EXPECT_EQ(fadeAt(lower), 1);
    QMetaObject::invokeMethod(games(), "positionViewAtEnd");
    EXPECT_EQ(fadeAt(upper), 1);
    EXPECT_EQ(fadeAt(lower), 0);
    // Few games fit.
    ASSERT_TRUE(QDir(settings.saveFolder()).removeRecursively());
    makeClips({"Dota 2 - a.mp4"});
    EXPECT_EQ(fadeAt(listArea().top() + 1), 0);
    EXPECT_EQ(fadeAt(listArea().bottom() - 1), 0);
}

TEST_F(SidebarTest, WheelScrollsAlsoOverThePageRows)
{
    makeManyGames();
    const auto* recaps = item(QStringLiteral("Maç Özetleri, 0"));
    const auto before = contentY();
    QWheelEvent event(test::middleOf(recaps), window->mapToGlobal(test::middleOf(recaps)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &event);
    EXPECT_TRUE(QTest::qWaitFor([&] { return contentY() > before + 10; }));
}

TEST_F(SidebarTest, ListEndsAtTheLastGameWhenGamesAreRemoved)
{
    makeManyGames();
    QMetaObject::invokeMethod(games(), "positionViewAtEnd");
    for (char each = 'c'; each <= 'z'; ++each) {
        EXPECT_TRUE(
            QFile::remove(settings.saveFolder() + QStringLiteral("/Game %1 - clip.mp4").arg(QLatin1Char(each))));
    }
    reloadLibrary();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isInListArea(QStringLiteral("Tüm Klipler, 2")); }));
    EXPECT_TRUE(isInListArea(QStringLiteral("Game b, 1")));
}

TEST_F(SidebarTest, ClickedOrNewGameDoesNotScrollTheList)
{
    makeManyGames();
    window->requestActivate();
    scrollTo(contentY() + 20);
    const auto before = contentY();
    click(QStringLiteral("Game a, 1"));
    drawFrame();
    EXPECT_EQ(contentY(), before);
    scrollTo(300);
    makeClips({"Other - a.mp4"});
    EXPECT_EQ(contentY(), 300);
}

TEST_F(SidebarTest, GamesAreANamedListToScreenReaders)
{
    makeManyGames();
    auto* const list = QAccessible::queryAccessibleInterface(games());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), QStringLiteral("OYUNLAR / UYGULAMALAR"));
    QStringList names;
    for (int i = 0; i < list->childCount(); ++i) {
        names.append(list->child(i)->text(QAccessible::Name));
    }
    EXPECT_TRUE(names.contains(QStringLiteral("Game a, 1"))) << qPrintable(names.join(u' '));
    EXPECT_FALSE(names.contains(QStringLiteral("Tüm Klipler, 26"))) << qPrintable(names.join(u' '));
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
    EXPECT_FALSE(shows(QStringLiteral("Güncelleme var: 2.0")));
    updates->receive(R"({"version": "2.0", "notes": [], "url": "https://example.org/"})");
    updates->setShowSheet(false);
    drawFrame();
    picture(QStringLiteral("sidebar-update"));
    click(QStringLiteral("Güncelleme var: 2.0"));
    EXPECT_TRUE(updates->showSheet());
}

} // namespace
} // namespace quelto
