// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

using namespace std::chrono_literals;

const auto MatchGame = QStringLiteral("League of Legends");

class MatchListPageTest : public test::ShellFixture {
protected:
    /// The file need not exist.
    QString clipPath(const QString& name) const { return QDir(settings.saveFolder()).filePath(name); }
    QString makeClip(const QString& name) const
    {
        QDir().mkpath(settings.saveFolder());
        QFile file(clipPath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }
    void start(const QString& game, const QString& hero, const QStringList& clips = {})
    {
        matches->gameStarted(game, hero);
        std::ranges::for_each(clips, [&](const QString& each) { matches->clipSaved(each); });
        time.settle();
    }
    void end(const QString& game)
    {
        matches->gameEnded(game);
        time.advance(10s);
        time.settle();
    }
    /// Plays a match with one clip.
    void play(const QString& hero, const QString& game = MatchGame)
    {
        start(game, hero, {makeClip(game + QStringLiteral(" - ") + hero + QStringLiteral(".mp4"))});
        end(game);
    }
    /// Plays matches with the heroes "Hero 0", "Hero 1" and so on; the last one is the newest.
    void playMany(int count)
    {
        for (int i = 0; i < count; ++i) {
            play(QStringLiteral("Hero %1").arg(i));
        }
    }
    void showPage()
    {
        navigation->showMatches();
        time.settle();
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        drawFrame();
    }
    void update()
    {
        time.settle();
        drawFrame();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window, key, modifiers);
        drawFrame();
    }

    QQuickItem* list() const
    {
        return test::firstVisible(window, [](const QQuickItem* each) {
            return QByteArray(each->metaObject()->className()).startsWith("MatchRows_QMLTYPE");
        });
    }
    /// The rows that exist, from top to bottom.
    QList<QQuickItem*> rows() const
    {
        QList<QQuickItem*> found;
        if (list() != nullptr) {
            test::visitVisible(list(), [&](QQuickItem* each) {
                if (QByteArray(each->metaObject()->className()).startsWith("MatchRow_QMLTYPE")) {
                    found.append(each);
                }
            });
        }
        std::ranges::sort(found, {}, &QQuickItem::y);
        return found;
    }
    QStringList titles() const
    {
        QStringList found;
        for (const auto* row : rows()) {
            found.append(row->property("title").toString());
        }
        return found;
    }
    /// The row of a hero; null if it does not exist.
    QQuickItem* row(const QString& hero) const
    {
        for (auto* each : rows()) {
            if (each->property("title").toString().endsWith(hero)) {
                return each;
            }
        }
        return nullptr;
    }
    /// The part of a row's subtitle after the date.
    QString countsOf(const QString& hero) const
    {
        return row(hero)->property("subtitle").toString().section(QStringLiteral(" • "), 1);
    }
    /// The hero of the row that has the keyboard focus; empty if none has.
    QString focusedHero() const
    {
        for (const auto* each : rows()) {
            if (each->hasActiveFocus()) {
                return each->property("title").toString().section(QStringLiteral(" • "), 1);
            }
        }
        return {};
    }
    bool isMarked(const QString& hero) const
    {
        return test::firstVisibleOn(row(hero), [](const QQuickItem* each) {
                   return QByteArray(each->metaObject()->className()).startsWith("FocusRing_QMLTYPE");
               }) != nullptr;
    }
    QQuickItem* trashButton(const QString& hero) const
    {
        return test::firstVisibleOn(row(hero), [](QQuickItem* each) {
            const auto* interface = QAccessible::queryAccessibleInterface(each);
            return interface != nullptr && interface->role() == QAccessible::Button;
        });
    }
    void clickOn(const QQuickItem* target, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseClick(window, button, {}, test::middleOf(target));
        drawFrame();
    }
    bool asksToDelete() const { return shows(QStringLiteral("Bu maç özeti silinsin mi?")); }
    bool isWholeRowVisible(const QString& hero) const
    {
        return test::placeOf(list()).contains(test::placeOf(row(hero)).adjusted(-3, -3, 3, 3));
    }
    QString idOf(const QString& hero) const
    {
        const auto found = std::ranges::find(matches->sessions(), hero, &MatchSession::hero);
        return matchIdText(found->id);
    }
};

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
    start(MatchGame, QStringLiteral("Ahri"), {makeClip(QStringLiteral("League of Legends - a.mp4"))});
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
    start(MatchGame, QStringLiteral("Ahri"));
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
    start(MatchGame, QStringLiteral("Ahri"));
    showPage();
    end(MatchGame);
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("Henüz maç özeti yok")));
}

TEST_F(MatchListPageTest, NewMatchAppearsAboveTheOthers)
{
    playMany(30);
    showPage();
    start(MatchGame, QStringLiteral("Ahri"));
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
    start(MatchGame, QStringLiteral("Ahri"), {makeClip(QStringLiteral("League of Legends - a.mp4"))});
    drawFrame();
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 14"));
    EXPECT_EQ(test::placeOf(row(QStringLiteral("Hero 14"))), before);
    end(MatchGame);
    drawFrame();
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 14"));
    EXPECT_EQ(test::placeOf(row(QStringLiteral("Hero 14"))), before);
    press(Qt::Key_Home);
    EXPECT_EQ(focusedHero(), QStringLiteral("Ahri"));
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Ahri")));
}

TEST_F(MatchListPageTest, ClickOpensTheMatch)
{
    playMany(2);
    showPage();
    clickOn(row(QStringLiteral("Hero 0")));
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Match);
    EXPECT_EQ(navigation->matchId(), idOf(QStringLiteral("Hero 0")));
}

TEST_F(MatchListPageTest, ReturnsToTheRowOfTheMatchThatWasOpen)
{
    playMany(40);
    showPage();
    navigation->showMatch(idOf(QStringLiteral("Hero 10")));
    update();
    showPage();
    ASSERT_NE(row(QStringLiteral("Hero 10")), nullptr);
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 10")));
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 10"));
    EXPECT_FALSE(isMarked(QStringLiteral("Hero 10")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 10"));
    EXPECT_TRUE(isMarked(QStringLiteral("Hero 10")));
    navigation->showLibrary();
    showPage();
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39")) << "the match was not open last";
}

TEST_F(MatchListPageTest, ReturnsToTheNextRowIfTheMatchIsDeleted)
{
    playMany(40);
    showPage();
    const auto id = idOf(QStringLiteral("Hero 10"));
    navigation->showMatch(id);
    update();
    matches->deleteSession(QUuid(id), MatchTracker::WithClips::no);
    update();
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 9"));
    ASSERT_NE(row(QStringLiteral("Hero 9")), nullptr);
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 9")));
}

TEST_F(MatchListPageTest, KeysMoveBetweenRowsAndReturnOpens)
{
    playMany(40);
    showPage();
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39"));
    EXPECT_FALSE(isMarked(QStringLiteral("Hero 39")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39")) << "the first key shows which row has the focus";
    EXPECT_TRUE(isMarked(QStringLiteral("Hero 39")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 38"));
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39"));
    press(Qt::Key_End);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 0")));
    press(Qt::Key_PageUp);
    EXPECT_FALSE(focusedHero().isEmpty());
    EXPECT_NE(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_TRUE(isWholeRowVisible(focusedHero()));
    press(Qt::Key_PageDown);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    press(Qt::Key_Home);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39"));
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 39")));
    press(Qt::Key_Return);
    EXPECT_EQ(navigation->matchId(), idOf(QStringLiteral("Hero 39")));
}

TEST_F(MatchListPageTest, PagesDownThroughAllRows)
{
    playMany(40);
    showPage();
    press(Qt::Key_Down);
    QStringList reached;
    for (int i = 0; i < 40 && focusedHero() != QStringLiteral("Hero 0"); ++i) {
        press(Qt::Key_PageDown);
        ASSERT_TRUE(isWholeRowVisible(focusedHero())) << focusedHero().toStdString();
        reached.append(focusedHero());
    }
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_GT(reached.size(), 3);
    EXPECT_LT(reached.size(), 15);
}

TEST_F(MatchListPageTest, ListIsOneTabStopWithItsTrashButton)
{
    playMany(3);
    showPage();
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), trashButton(QStringLiteral("Hero 2")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 1"));
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), trashButton(QStringLiteral("Hero 1")));
    press(Qt::Key_Tab);
    for (const auto* each : rows()) {
        EXPECT_FALSE(each->hasActiveFocus());
    }
    press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(window->activeFocusItem(), trashButton(QStringLiteral("Hero 1")));
    press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(window->activeFocusItem(), row(QStringLiteral("Hero 1")));
}

TEST_F(MatchListPageTest, DeleteKeyDeletesTheRecapOnlyAndFocusesTheNextRow)
{
    playMany(3);
    showPage();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Delete);
    ASSERT_TRUE(asksToDelete());
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    update();
    EXPECT_FALSE(asksToDelete());
    EXPECT_EQ(
        titles(),
        QStringList({QStringLiteral("League of Legends • Hero 2"), QStringLiteral("League of Legends • Hero 0")}));
    EXPECT_TRUE(trash.recycled.isEmpty());
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_TRUE(isMarked(QStringLiteral("Hero 0")));
}

TEST_F(MatchListPageTest, TrashButtonDeletesTheRecapWithItsClips)
{
    playMany(2);
    showPage();
    clickOn(trashButton(QStringLiteral("Hero 1")));
    ASSERT_TRUE(asksToDelete());
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches) << "the row is not opened";
    clickOn(textItem(QStringLiteral("Özeti ve kliplerini sil")));
    update();
    EXPECT_EQ(titles(), QStringList(QStringLiteral("League of Legends • Hero 0")));
    EXPECT_EQ(trash.recycled, QStringList(clipPath(QStringLiteral("League of Legends - Hero 1.mp4"))));
}

TEST_F(MatchListPageTest, CancelKeepsTheRecapAndTheFocus)
{
    playMany(2);
    showPage();
    press(Qt::Key_Down);
    press(Qt::Key_Delete);
    press(Qt::Key_Return);
    EXPECT_FALSE(asksToDelete());
    press(Qt::Key_Delete);
    press(Qt::Key_Escape);
    update();
    EXPECT_EQ(rows().size(), 2);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 1"));
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches);
}

TEST_F(MatchListPageTest, MenuDeletesTheRecapUnderThePointer)
{
    playMany(2);
    showPage();
    clickOn(row(QStringLiteral("Hero 0")), Qt::RightButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Özeti Sil")); }));
    picture(QStringLiteral("matches-menu"));
    clickOn(textItem(QStringLiteral("Özeti Sil")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return asksToDelete(); }));
    clickOn(textItem(QStringLiteral("Sadece özeti sil (klipler kalır)")));
    update();
    EXPECT_EQ(titles(), QStringList(QStringLiteral("League of Legends • Hero 1")));
}

TEST_F(MatchListPageTest, MenuKeyOpensTheMenuOfTheRowWithTheFocus)
{
    for (const auto& [key, modifier] :
         {std::pair(Qt::Key_Menu, Qt::NoModifier), std::pair(Qt::Key_F10, Qt::ShiftModifier)}) {
        playMany(1);
        showPage();
        press(Qt::Key_Down);
        press(key, modifier);
        ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Özeti Sil")); }));
        press(Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(QStringLiteral("Özeti Sil")); }));
        EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
        EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches);
    }
}

TEST_F(MatchListPageTest, DeletingTheLastRecapShowsTheEmptyState)
{
    playMany(1);
    showPage();
    press(Qt::Key_Down);
    press(Qt::Key_Delete);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    update();
    EXPECT_TRUE(shows(QStringLiteral("Henüz maç özeti yok")));
    press(Qt::Key_Escape);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Library) << "the page still has the keyboard";
}

TEST_F(MatchListPageTest, CountsFollowClipsThatAreRenamedTrashedAndRestored)
{
    const auto epic = makeClip(QStringLiteral("League of Legends - [EFSANE 170] PENTAKILL.mp4"));
    start(MatchGame, QStringLiteral("Ahri"), {epic, makeClip(QStringLiteral("League of Legends - a.mp4"))});
    end(MatchGame);
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
    start(MatchGame, hero, {clipPath(QStringLiteral("a.mp4"))});
    end(MatchGame);
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
        start(MatchGame, hero,
              {makeClip(QStringLiteral("League of Legends - [EFSANE 170] PENTAKILL (%1).mp4").arg(hero)),
               makeClip(QStringLiteral("League of Legends - %1.mp4").arg(hero))});
        end(MatchGame);
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
