// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/MatchListFixture.h"

namespace quelto {
namespace {

using MatchListPageTest = test::MatchListFixture;

TEST_F(MatchListPageTest, ShowsNothingBeforeTheMatchesAreLoaded)
{
    navigation->showMatches();
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("Maç Özetleri")));
    EXPECT_FALSE(shows(QStringLiteral("Henüz maç özeti yok")));
    EXPECT_EQ(list(), nullptr);
    update();
    EXPECT_TRUE(shows(QStringLiteral("Henüz maç özeti yok")));
}

TEST_F(MatchListPageTest, WithoutMatchesItSaysHowToGetOne)
{
    showPage();
    EXPECT_TRUE(shows(QStringLiteral("Henüz maç özeti yok")));
    EXPECT_TRUE(shows(QStringLiteral("Oto klip açıkken bir LoL veya Dota 2 maçı oynayınca burada görünür.")));
    picture(QStringLiteral("matches-empty"));
}

TEST_F(MatchListPageTest, TitleIsWhereTheLibraryHasIts)
{
    const auto pageTitle = [&] {
        return test::firstVisible(window, [](const QQuickItem* each) {
            return each->inherits("QQuickText") && test::fontOf(each).pixelSize() == 28;
        });
    };
    const auto inLibrary = test::placeOf(pageTitle());
    showPage();
    EXPECT_EQ(pageTitle()->property("text").toString(), QStringLiteral("Maç Özetleri"));
    EXPECT_EQ(test::placeOf(pageTitle()).topLeft(), inLibrary.topLeft());
}

TEST_F(MatchListPageTest, RunningMatchIsOnlyTheLiveRow)
{
    start(matchGame(), QStringLiteral("Ahri"), {makeClip(QStringLiteral("League of Legends - a.mp4"))});
    showPage();
    ASSERT_EQ(titles(), QStringList(QStringLiteral("League of Legends • Ahri")));
    EXPECT_TRUE(shows(QStringLiteral("Maç sürüyor • 1 klip")));
    EXPECT_EQ(trashButton(QStringLiteral("Ahri")), nullptr);
    const auto* mark = test::firstVisibleOn(row(QStringLiteral("Ahri")), [](const QQuickItem* each) {
        return each->inherits("QQuickRectangle") && test::shadowOf(each) != nullptr;
    });
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(test::colorOf(mark), theme->live());
    picture(QStringLiteral("matches-live"));
}

TEST_F(MatchListPageTest, RunningMatchCannotBeOpenedOrDeleted)
{
    start(matchGame(), QStringLiteral("Ahri"));
    showPage();
    clickOn(row(QStringLiteral("Ahri")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Ahri"));
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    press(Qt::Key_Delete);
    press(Qt::Key_Menu);
    clickOn(row(QStringLiteral("Ahri")), Qt::RightButton);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches);
    EXPECT_FALSE(asksToDelete());
    EXPECT_FALSE(shows(QStringLiteral("Özeti Sil")));
}

TEST_F(MatchListPageTest, RunningMatchWithoutClipsDisappearsWhenItEnds)
{
    start(matchGame(), QStringLiteral("Ahri"));
    showPage();
    end(matchGame());
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("Henüz maç özeti yok")));
}

TEST_F(MatchListPageTest, NewMatchAppearsAboveTheOthers)
{
    playMany(30);
    showPage();
    start(matchGame(), QStringLiteral("Ahri"));
    drawFrame();
    ASSERT_NE(row(QStringLiteral("Ahri")), nullptr);
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Ahri")));
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 29")));
}

TEST_F(MatchListPageTest, NewMatchKeepsTheScrollPositionAndTheFocus)
{
    playMany(30);
    showPage();
    press(Qt::Key_Home);
    for (int i = 0; i < 15; ++i) {
        press(Qt::Key_Down);
    }
    ASSERT_EQ(focusedHero(), QStringLiteral("Hero 14"));
    const auto before = test::placeOf(row(QStringLiteral("Hero 14")));
    start(matchGame(), QStringLiteral("Ahri"), {makeClip(QStringLiteral("League of Legends - a.mp4"))});
    drawFrame();
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 14"));
    EXPECT_EQ(test::placeOf(row(QStringLiteral("Hero 14"))), before);
    end(matchGame());
    drawFrame();
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 14"));
    EXPECT_EQ(test::placeOf(row(QStringLiteral("Hero 14"))), before);
    press(Qt::Key_Home);
    EXPECT_EQ(focusedHero(), QStringLiteral("Ahri"));
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Ahri")));
}

TEST_F(MatchListPageTest, CountsFollowClipsThatAreRenamedTrashedAndRestored)
{
    const auto epic = makeClip(QStringLiteral("League of Legends - [EFSANE 170] PENTAKILL.mp4"));
    start(matchGame(), QStringLiteral("Ahri"), {epic, makeClip(QStringLiteral("League of Legends - a.mp4"))});
    end(matchGame());
    reloadLibrary();
    showPage();
    EXPECT_EQ(countsOf(QStringLiteral("Ahri")), QStringLiteral("2 klip • 1 Efsane"));
    ASSERT_TRUE(library->rename(Clip(epic), QStringLiteral("best")));
    update();
    EXPECT_EQ(countsOf(QStringLiteral("Ahri")), QStringLiteral("2 klip"));
    library->trash(Clip(clipPath(QStringLiteral("League of Legends - a.mp4"))));
    reloadLibrary();
    EXPECT_EQ(countsOf(QStringLiteral("Ahri")), QStringLiteral("1 klip"));
    makeClip(QStringLiteral("League of Legends - a.mp4"));
    reloadLibrary();
    EXPECT_EQ(countsOf(QStringLiteral("Ahri")), QStringLiteral("2 klip"));
}

TEST_F(MatchListPageTest, OfTwoHundredMatchesOnlyVisibleRowsExist)
{
    playMany(200);
    showPage();
    const auto highest = static_cast<int>(list()->height() / rows().first()->height()) + 2;
    EXPECT_LE(rows().size(), highest);
    press(Qt::Key_End);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_LE(rows().size(), highest);
    press(Qt::Key_Home);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 199"));
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 199")));
}

TEST_F(MatchListPageTest, WheelScrollsToTheLastRow)
{
    playMany(30);
    showPage();
    const auto middle = test::middleOf(list());
    const auto last = [&] { return row(QStringLiteral("Hero 0")); };
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QWheelEvent event(middle, window->mapToGlobal(middle), {}, {0, -600}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(window, &event);
        drawFrame();
        return last() != nullptr && isWholeRowVisible(QStringLiteral("Hero 0"));
    }));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QWheelEvent event(middle, window->mapToGlobal(middle), {}, {0, 600}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(window, &event);
        drawFrame();
        return row(QStringLiteral("Hero 29")) != nullptr && isWholeRowVisible(QStringLiteral("Hero 29"));
    }));
}

TEST_F(MatchListPageTest, RowUnderThePointerLightsUp)
{
    playMany(2);
    showPage();
    const auto fill = [&](const QString& hero) {
        return test::colorOf(row(hero)->property("background").value<QQuickItem*>());
    };
    EXPECT_EQ(fill(QStringLiteral("Hero 1")), theme->card());
    // Qt reports no movement to where the pointer was before.
    QTest::mouseMove(window, {5, 5});
    QTest::mouseMove(window, test::middleOf(row(QStringLiteral("Hero 1"))));
    EXPECT_TRUE(QTest::qWaitFor([&] { return fill(QStringLiteral("Hero 1")) == theme->cardHover(); }));
    EXPECT_EQ(fill(QStringLiteral("Hero 0")), theme->card());
    QTest::mouseMove(window, test::middleOf(trashButton(QStringLiteral("Hero 1"))));
    EXPECT_EQ(fill(QStringLiteral("Hero 1")), theme->cardHover());
    const auto animations =
        test::animationsOf(row(QStringLiteral("Hero 1"))->property("background").value<QQuickItem*>());
    ASSERT_FALSE(animations.isEmpty());
    EXPECT_EQ(animations.first()->property("duration").toInt(), 120);
}

TEST_F(MatchListPageTest, ScreenReaderGetsAListOfMatches)
{
    playMany(1);
    start(QStringLiteral("Dota 2"), QStringLiteral("Axe"));
    showPage();
    auto* const listInterface = QAccessible::queryAccessibleInterface(list());
    EXPECT_EQ(listInterface->role(), QAccessible::List);
    EXPECT_EQ(listInterface->text(QAccessible::Name), QStringLiteral("Maç Özetleri"));
    auto* const live = QAccessible::queryAccessibleInterface(row(QStringLiteral("Axe")));
    EXPECT_EQ(live->role(), QAccessible::ListItem);
    EXPECT_EQ(live->text(QAccessible::Name), QStringLiteral("Dota 2 • Axe, Maç sürüyor • 0 klip"));
    auto* const recap = row(QStringLiteral("Hero 0"));
    auto* const interface = QAccessible::queryAccessibleInterface(recap);
    EXPECT_EQ(interface->text(QAccessible::Name),
              recap->property("title").toString() + QStringLiteral(", ") + recap->property("subtitle").toString());
    auto* const button = QAccessible::queryAccessibleInterface(trashButton(QStringLiteral("Hero 0")));
    EXPECT_EQ(button->text(QAccessible::Name), QStringLiteral("Özeti Sil"));
    live->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches);
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Match);
}

TEST_F(MatchListPageTest, CutTextHasAToolTip)
{
    const auto hero = QStringLiteral("An extraordinarily long name of a hero ").repeated(5).trimmed();
    start(matchGame(), hero, {clipPath(QStringLiteral("a.mp4"))});
    end(matchGame());
    showPage();
    const auto title = QStringLiteral("League of Legends • ") + hero;
    auto* const label = test::firstVisibleOn(
        rows().first(), [](const QQuickItem* each) { return each->property("truncated").toBool(); });
    ASSERT_NE(label, nullptr);
    QTest::mouseMove(window, test::middleOf(label));
    const auto tips = [&] {
        int count = 0;
        test::visitVisible(window->contentItem(), [&](const QQuickItem* each) {
            count += each->inherits("QQuickText") && each->property("text").toString().contains(hero) ? 1 : 0;
        });
        return count;
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return tips() > 1; }));
    EXPECT_LE(test::placeOf(label).right(), test::placeOf(trashButton(hero)).left());
}

TEST_F(MatchListPageTest, PicturesOfManyMatches)
{
    const QStringList heroes{QStringLiteral("Ahri"),         QStringLiteral("Aurelion Sol, der Sternenschmied"),
                             QStringLiteral("Нунуивиллумп"), QString(),
                             QStringLiteral("Lux"),          QStringLiteral("Miss Fortune")};
    for (const auto& hero : heroes + heroes) {
        start(matchGame(), hero,
              {makeClip(QStringLiteral("League of Legends - [EFSANE 170] PENTAKILL (%1).mp4").arg(hero)),
               makeClip(QStringLiteral("League of Legends - %1.mp4").arg(hero))});
        end(matchGame());
    }
    start(QStringLiteral("Dota 2"), QStringLiteral("Nature's Prophet"), {makeClip(QStringLiteral("Dota 2 - a.mp4"))});
    window->resize(1440, 900);
    QTest::qWait(100);
    showPage();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    QTest::mouseMove(window, test::middleOf(rows().at(3)));
    EXPECT_FALSE(picture(QStringLiteral("matches-1440x900")).isNull());
    window->resize(1020, 640);
    for (const auto* language : {"de", "ru", "en"}) {
        settings.setLanguage(QLatin1String(language));
        time.settle();
        drawFrame();
        EXPECT_TRUE(truncatedTexts().isEmpty()) << language << truncatedTexts().join(u'|').toStdString();
        picture(QStringLiteral("matches-") + QLatin1String(language));
    }
}

} // namespace
} // namespace quelto
