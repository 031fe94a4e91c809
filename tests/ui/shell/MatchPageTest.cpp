// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"
#include "base/language/T.h"

#include "tests/ui/shell/MatchPageFixture.h"

namespace quelto {
namespace {

using namespace std::chrono_literals;

class MatchPageTest : public test::MatchPageFixture {
protected:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(window, key, modifiers); }
    QString focusedName() const
    {
        const auto* interface = QAccessible::queryAccessibleInterface(window->activeFocusItem());
        return interface == nullptr ? QString() : interface->text(QAccessible::Name);
    }
    bool isEnabled(const QString& name) { return item(name)->isEnabled(); }
    void clickPicture(const char* title) { QTest::mouseClick(window, Qt::LeftButton, {}, middleOfPicture(title)); }
    QPoint middleOfPicture(const char* title) const
    {
        const auto* found = card(title);
        return found == nullptr ? QPoint() : found->mapToScene({found->width() / 2, 60}).toPoint();
    }
    /// Waits until no dialog is open.
    void waitForDialog(const QString& title, bool isOpen)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return shows(title) == isOpen; })) << title.toStdString();
    }
    /// The number that is in the label of the button that deletes the selection; -1 without the button.
    int selectedCount() const
    {
        for (int count = 0; count <= 200; ++count) {
            if (test::itemNamed(window, T("Seçilenleri sil ({0})", count)) != nullptr) {
                return count;
            }
        }
        return -1;
    }
};

TEST_F(MatchPageTest, ShowsTheMatchAndItsClipsInTheOrderTheyWerePlayed)
{
    open(play({"Third.mp4", "First.mp4", "Second.mp4"}));
    EXPECT_EQ(test::fontOf(textItem(QStringLiteral("Dota 2 • Invoker"))).pixelSize(), 28);
    const auto date = L10n::date(matches->sessions().first().start, QStringLiteral("EEEdMMMHmm"));
    EXPECT_TRUE(shows(date + QStringLiteral(" • 3 klip")));
    EXPECT_EQ(cardTitles(), (QStringList{QStringLiteral("Third"), QStringLiteral("First"), QStringLiteral("Second")}));
    EXPECT_TRUE(shows(QStringLiteral("Klipleri tek tek izle; beğendiklerin kalır, diğerleri Çöp Kutusu'na gider.")));
}

TEST_F(MatchPageTest, EnterStartsTheReview)
{
    const auto id = play({"A.mp4"});
    open(id);
    EXPECT_EQ(focusedName(), QStringLiteral("Klipleri İncele"));
    press(Qt::Key_Return);
    EXPECT_EQ(navigation->page(), (Page{.kind = Pages::Kind::Review, .match = id}));
}

TEST_F(MatchPageTest, UnknownMatchShowsOnlyTheWayBack)
{
    time.settle();
    open(QUuid::createUuid());
    EXPECT_TRUE(shows(QStringLiteral("Bu maç özeti bulunamadı.")));
    for (const auto* each : {"Klipleri İncele", "Tümünü seç", "Seçilenleri sil (0)", "Özeti Sil", "Klipler"}) {
        const auto* found = test::firstVisibleOn(page(), [&](QQuickItem* candidate) {
            const auto* interface = QAccessible::queryAccessibleInterface(candidate);
            return interface != nullptr && interface->text(QAccessible::Name) == QString::fromUtf8(each);
        });
        EXPECT_EQ(found, nullptr) << each;
    }
    click(QStringLiteral("Maç Özetleri"));
    EXPECT_EQ(navigation->page(), Page{.kind = Pages::Kind::Matches});
}

TEST_F(MatchPageTest, ClaimsNothingBeforeTheMatchesAreLoaded)
{
    open(QUuid::createUuid());
    EXPECT_FALSE(shows(QStringLiteral("Bu maç özeti bulunamadı.")));
    EXPECT_FALSE(shows(QStringLiteral("Klipleri İncele")));
    time.settle();
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("Bu maç özeti bulunamadı.")));
}

TEST_F(MatchPageTest, ClickSelectsAndDoubleClickOpens)
{
    open(play({"A.mp4", "B.mp4"}));
    clickPicture("B");
    EXPECT_EQ(selectedCount(), 1);
    EXPECT_TRUE(isSelected("B"));
    EXPECT_FALSE(navigation->hasSelected());
    QTest::mouseDClick(window, Qt::LeftButton, {}, middleOfPicture("A"));
    EXPECT_EQ(navigation->selectedTitle(), QStringLiteral("A"));
    navigation->closeClip();
    drawFrame();
    EXPECT_TRUE(isSelected("B")) << "the page keeps its selection while a clip is open";
    EXPECT_FALSE(isSelected("A"));
    clickPicture("B");
    EXPECT_EQ(selectedCount(), 0);
}

TEST_F(MatchPageTest, OneButtonSelectsAllOrNone)
{
    open(play({"A.mp4", "B.mp4"}));
    clickPicture("A");
    click(QStringLiteral("Tümünü seç"));
    EXPECT_EQ(selectedCount(), 2);
    click(QStringLiteral("Seçimi kaldır"));
    EXPECT_EQ(selectedCount(), 0);
    EXPECT_TRUE(item(QStringLiteral("Tümünü seç")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Seçilenleri sil (0)")));
}

TEST_F(MatchPageTest, DeletesTheSelectionOnlyAfterConfirmation)
{
    open(play({"A.mp4", "B.mp4", "C.mp4"}));
    clickPicture("A");
    clickPicture("C");
    const auto question = QStringLiteral("2 klip çöp kutusuna taşınsın mı?");
    click(QStringLiteral("Seçilenleri sil (2)"));
    waitForDialog(question, true);
    EXPECT_TRUE(shows(QStringLiteral("Klipler Çöp Kutusu'ndan geri alınabilir.")));
    click(QStringLiteral("Vazgeç"));
    waitForDialog(question, false);
    EXPECT_EQ(trash.calls, 0);
    EXPECT_EQ(selectedCount(), 2);
    click(QStringLiteral("Seçilenleri sil (2)"));
    waitForDialog(question, true);
    click(QStringLiteral("Çöp Kutusuna Taşı"));
    drawFrame();
    EXPECT_EQ(trash.recycled, (QStringList{pathOf("A.mp4"), pathOf("C.mp4")}));
    EXPECT_EQ(cardTitles(), QStringList(QStringLiteral("B")));
    EXPECT_EQ(selectedCount(), 0);
    EXPECT_EQ(focusedName(), QStringLiteral("Klipler")) << "the button with the focus is disabled now";
}

TEST_F(MatchPageTest, EscapeClearsTheSelectionBeforeItLeaves)
{
    open(play({"A.mp4", "B.mp4"}));
    click(QStringLiteral("Tümünü seç"));
    item(QStringLiteral("Seçilenleri sil (2)"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Escape);
    EXPECT_EQ(selectedCount(), 0);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Match);
    EXPECT_EQ(focusedName(), QStringLiteral("Klipler"));
    press(Qt::Key_Escape);
    EXPECT_EQ(navigation->page(), Page{.kind = Pages::Kind::Matches});
}

TEST_F(MatchPageTest, HeldEscapeDoesNotLeave)
{
    open(play({"A.mp4"}));
    clickPicture("A");
    test::holdKey(window, Qt::Key_Escape);
    EXPECT_EQ(selectedCount(), 0);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Match);
}

TEST_F(MatchPageTest, KeysSelectOpenAndDelete)
{
    open(play({"A.mp4", "B.mp4", "C.mp4"}));
    item(QStringLiteral("Tümünü seç"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    ASSERT_EQ(focusedName(), QStringLiteral("Klipler")) << "the button that deletes nothing is skipped";
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_TRUE(isSelected("B"));
    test::holdKey(window, Qt::Key_Space);
    EXPECT_FALSE(isSelected("B")) << "a key that is held toggles once";
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selectedCount(), 3);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selectedCount(), 3) << "select all never selects none";
    press(Qt::Key_Space);
    press(Qt::Key_Delete);
    waitForDialog(QStringLiteral("2 klip çöp kutusuna taşınsın mı?"), true);
    press(Qt::Key_Escape);
    waitForDialog(QStringLiteral("2 klip çöp kutusuna taşınsın mı?"), false);
    press(Qt::Key_Escape);
    EXPECT_EQ(selectedCount(), 0);
    press(Qt::Key_Delete);
    waitForDialog(QStringLiteral("Klip çöp kutusuna taşınsın mı?"), true);
    click(QStringLiteral("Çöp Kutusuna Taşı"));
    EXPECT_EQ(trash.recycled, QStringList(pathOf("B.mp4")));
    press(Qt::Key_Return);
    EXPECT_EQ(navigation->selectedTitle(), QStringLiteral("C")) << "the next clip is the current one";
}

TEST_F(MatchPageTest, MenuDeletesOnlyItsClip)
{
    open(play({"A.mp4", "B.mp4", "C.mp4"}));
    clickPicture("A");
    QTest::mouseClick(window, Qt::RightButton, {}, middleOfPicture("B"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Klasörde Göster")); }));
    click(QStringLiteral("Çöp Kutusuna Taşı"));
    waitForDialog(QStringLiteral("Klip çöp kutusuna taşınsın mı?"), true);
    click(QStringLiteral("Çöp Kutusuna Taşı"));
    EXPECT_EQ(trash.recycled, QStringList(pathOf("B.mp4")));
    drawFrame();
    EXPECT_EQ(cardTitles(), (QStringList{QStringLiteral("A"), QStringLiteral("C")}));
    EXPECT_TRUE(isSelected("A"));
}

TEST_F(MatchPageTest, CardsAreDraggedAsFiles)
{
    open(play({"A.mp4"}));
    const auto start = middleOfPicture("A");
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    for (int y = 10; y <= 60; y += 10) {
        QTest::mouseMove(window, start + QPoint(0, y));
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !requestedActions.isEmpty(); }));
    QTest::mouseRelease(window, Qt::LeftButton, {}, start + QPoint(0, 60));
    EXPECT_EQ(requestedActions, QStringList(QStringLiteral("drag ") + pathOf("A.mp4")));
    EXPECT_EQ(selectedCount(), 0);
}

TEST_F(MatchPageTest, FollowsChangesFromElsewhere)
{
    open(play({"A.mp4", "B.mp4"}));
    clickPicture("B");
    ASSERT_TRUE(library->rename(Clip(pathOf("B.mp4")), QStringLiteral("Best")));
    drawFrame();
    EXPECT_EQ(cardTitles(), (QStringList{QStringLiteral("A"), QStringLiteral("Best")}));
    EXPECT_TRUE(isSelected("Best"));
    ASSERT_TRUE(QFile::rename(pathOf("A.mp4"), folder.filePath(QStringLiteral("A.mp4"))));
    reloadLibrary();
    EXPECT_EQ(cardTitles(), QStringList(QStringLiteral("Best")));
    ASSERT_TRUE(QFile::rename(folder.filePath(QStringLiteral("A.mp4")), pathOf("A.mp4")));
    reloadLibrary();
    EXPECT_EQ(cardTitles(), (QStringList{QStringLiteral("A"), QStringLiteral("Best")}));
}

TEST_F(MatchPageTest, TwoHundredClipsHaveOnlyTheCardsInView)
{
    const auto id = playMany(200);
    open(id);
    EXPECT_LE(cardTitles().size(), 15);
    EXPECT_EQ(cardTitles().first(), QStringLiteral("Nr 000"));
    item(QStringLiteral("Tümünü seç"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    press(Qt::Key_End);
    drawFrame();
    EXPECT_EQ(cardTitles().last(), QStringLiteral("Nr 199"));
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selectedCount(), 200);
}

TEST_F(MatchPageTest, RecapIsDeletedWithOrWithoutItsClips)
{
    for (const auto* button : {"Sadece özeti sil (klipler kalır)", "Özeti ve kliplerini sil"}) {
        const auto id = play({"A.mp4", "B.mp4"});
        open(id);
        click(QStringLiteral("Özeti Sil"));
        waitForDialog(QStringLiteral("Bu maç özeti silinsin mi?"), true);
        const QSignalSpy removed(matches.get(), &MatchTracker::sessionAboutToBeRemoved);
        click(QString::fromUtf8(button));
        EXPECT_EQ(removed.size(), 1);
        EXPECT_FALSE(matches->session(id));
        EXPECT_EQ(navigation->page(), Page{.kind = Pages::Kind::Matches});
    }
    EXPECT_EQ(trash.recycled, (QStringList{pathOf("A.mp4"), pathOf("B.mp4")}));
}

TEST_F(MatchPageTest, KeyboardStartsAtTheWayBackWithoutClips)
{
    const auto match = play({"A.mp4"});
    QFile::remove(pathOf("A.mp4"));
    reloadLibrary();
    open(match);
    EXPECT_TRUE(item(QStringLiteral("Maç Özetleri"))->hasActiveFocus());
    press(Qt::Key_Tab);
    EXPECT_TRUE(item(QStringLiteral("Özeti Sil"))->hasActiveFocus());
}

TEST_F(MatchPageTest, RecapWithoutClipsHasNothingToReview)
{
    open(play({"A.mp4"}));
    clickPicture("A");
    press(Qt::Key_Delete);
    waitForDialog(QStringLiteral("1 klip çöp kutusuna taşınsın mı?"), true);
    click(QStringLiteral("Çöp Kutusuna Taşı"));
    drawFrame();
    EXPECT_EQ(cardTitles(), QStringList());
    const auto date = L10n::date(matches->sessions().first().start, QStringLiteral("EEEdMMMHmm"));
    EXPECT_TRUE(shows(date + QStringLiteral(" • 0 klip")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Klipleri İncele")));
    EXPECT_EQ(focusedName(), QStringLiteral("Maç Özetleri"));
    press(Qt::Key_Escape);
    EXPECT_EQ(navigation->page(), Page{.kind = Pages::Kind::Matches});
}

TEST_F(MatchPageTest, NextMatchIsANewPage)
{
    const auto first = play({"A.mp4"});
    const auto second = play({"B.mp4"});
    open(first);
    clickPicture("A");
    open(second);
    EXPECT_EQ(cardTitles(), QStringList(QStringLiteral("B")));
    EXPECT_EQ(selectedCount(), 0);
}

class MatchPageInALowWindow : public MatchPageTest {
protected:
    void SetUp() override
    {
        MatchPageTest::SetUp();
        window->setMinimumSize({});
        window->resize(683, 384);
        open(playMany(30));
        grid = test::firstVisible(window, [](const QQuickItem* each) { return each->objectName() == u"cards"; });
        ASSERT_NE(grid, nullptr);
    }
    bool isInView(const QQuickItem* found) const { return QRectF({}, window->size()).contains(test::placeOf(found)); }
    qreal contentY() const { return grid->property("contentY").toReal(); }

    QQuickItem* grid = nullptr;
};

TEST_F(MatchPageInALowWindow, ScrollsAsAWhole)
{
    EXPECT_EQ(test::placeOf(grid).top(), 0);
    EXPECT_EQ(contentY(), 0);
    EXPECT_EQ(focusedName(), QStringLiteral("Klipleri İncele"));
    EXPECT_GT(test::placeOf(card("Nr 000")).top(), test::placeOf(item(QStringLiteral("Tümünü seç"))).bottom());
    grid->setProperty("contentY", grid->property("contentHeight").toReal() - grid->height());
    drawFrame();
    EXPECT_EQ(cardTitles().last(), QStringLiteral("Nr 029"));
    EXPECT_EQ(test::placeOf(card("Nr 029")).bottom(), 384 - 28);
}

TEST_F(MatchPageInALowWindow, KeyboardShowsWhatIsCurrent)
{
    grid->parentItem()->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Home);
    drawFrame();
    EXPECT_TRUE(isInView(card("Nr 000"))) << contentY();
    press(Qt::Key_End);
    drawFrame();
    EXPECT_TRUE(isInView(card("Nr 029"))) << contentY();
    auto* const all = item(QStringLiteral("Tümünü seç"));
    all->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(isInView(all)) << contentY();
    press(Qt::Key_Delete);
    press(Qt::Key_Right);
    EXPECT_TRUE(isInView(all)) << "keys of the head's controls are not for the cards";
    EXPECT_FALSE(shows(QStringLiteral("Klip çöp kutusuna taşınsın mı?")));
}

class MatchPageInLanguages : public MatchPageTest, public testing::WithParamInterface<Language> { };

TEST_P(MatchPageInLanguages, FitsTheMinimumWindow)
{
    window->resize(window->minimumSize());
    const auto id = play({"A.mp4", "B.mp4"});
    settings.setLanguage(rawValueOf(GetParam()));
    drawFrame();
    open(id);
    item(T("Tümünü seç"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    drawFrame();
    EXPECT_EQ(selectedCount(), 2);
    EXPECT_EQ(truncatedTexts(), QStringList());
    click(T("Seçilenleri sil ({0})", 2));
    waitForDialog(T("{0} klip çöp kutusuna taşınsın mı?", 2), true);
    EXPECT_EQ(truncatedTexts(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(All, MatchPageInLanguages, testing::ValuesIn(AllLanguages),
                         [](const auto& language) { return rawValueOf(language.param).toStdString(); });

} // namespace
} // namespace quelto
