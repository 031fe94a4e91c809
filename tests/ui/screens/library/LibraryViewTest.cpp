// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/keys/HotKeyText.h"
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/screens/library/LibraryScreenFixture.h"

#include "base/language/L10n.h"

#include <QAccessible>
#include <QTest>

namespace quelto {
namespace {

class LibraryViewTest : public test::LibraryScreenFixture {
protected:
    void open(const QString& properties = {})
    {
        reload();
        show(properties);
    }

    void makeThree()
    {
        makeFile("Dota 2 - Ace.mp4", 180);
        makeFile("League of Legends - 2026-03-01 20.15.07 [EFSANE 170] PENTAKILL.mp4", 120);
        makeFile("League of Legends - 2026-03-01 20.15.08.mp4", 60);
    }

    void type(const char* text)
    {
        for (; *text != 0; ++text) {
            QTest::keyClick(window, *text);
        }
    }

    void search(const char* text)
    {
        click(item(QStringLiteral("Ara")));
        type(text);
    }

    QString emptyHint() const
    {
        return QStringLiteral("Kayıt açıkken %1 tuşlarına basarak son %2 saniyeyi kaydedin.")
            .arg(hotKeyText(settings.hotkeyModifiers(), settings.hotkeyKeyName()))
            .arg(settings.clipLength());
    }

    QString selectedName() const { return navigation.selectedPath().section(u'/', -1); }
};

TEST_F(LibraryViewTest, ShowsTheEmptyState)
{
    open();
    EXPECT_TRUE(shows(QStringLiteral("Klipler")));
    EXPECT_TRUE(shows(QStringLiteral("Henüz klip yok")));
    EXPECT_TRUE(shows(emptyHint()));
    EXPECT_EQ(find(QStringLiteral("Efsane")), nullptr);
}

TEST_F(LibraryViewTest, EmptyStateNamesTheButtonWhereNoKeysSaveAClip)
{
    globalKey.setState(GlobalKey::State::ReservedByDesktop);
    open();
    EXPECT_FALSE(shows(emptyHint()));
    EXPECT_EQ(textItem(QStringLiteral("Shift")), nullptr);
    EXPECT_TRUE(shows(QStringLiteral("Kayıt açıkken son 30 saniyeyi kaydetmek için “Klip Kaydet” düğmesine basın. "
                                     "Oyundayken de kaydetmek için Ayarlar'daki kısayol bölümüne bakın.")));
    picture(QStringLiteral("library-empty-without-shortcut"));
    globalKey.bind(QStringLiteral("Ctrl+F9"));
    EXPECT_TRUE(shows(QStringLiteral("Kayıt açıkken Ctrl+F9 tuşlarına basarak son 30 saniyeyi kaydedin.")));
    EXPECT_NE(textItem(QStringLiteral("F9")), nullptr);
}

TEST_F(LibraryViewTest, EmptyStateMatchesDesign)
{
    open();
    const auto* title = textItem(QStringLiteral("Henüz klip yok"));
    EXPECT_EQ(test::fontOf(title).pixelSize(), 18);
    EXPECT_EQ(test::fontOf(title).weight(), QFont::Bold);
    EXPECT_EQ(test::colorOf(title), theme.text());
    const auto* hint = textItem(emptyHint());
    ASSERT_NE(hint, nullptr);
    EXPECT_EQ(test::fontOf(hint).pixelSize(), 13);
    EXPECT_EQ(test::colorOf(hint), theme.muted());
    const auto* caps = textItem(QStringLiteral("Shift"))->parentItem()->parentItem();
    EXPECT_GT(test::placeOf(caps).top(), test::placeOf(hint).bottom());
    EXPECT_NEAR(middleOf(caps).x(), size.width() / 2, 1);
    const auto* symbol = test::firstVisible(window, [](const QQuickItem* each) {
        return each->property("symbol").toString() == u"film.stack" && each->inherits("QQuickImage");
    });
    ASSERT_NE(symbol, nullptr);
    EXPECT_EQ(symbol->width(), 38);
    EXPECT_EQ(test::colorOf(symbol), theme.accent());
    const auto* circle = symbol->parentItem();
    EXPECT_EQ(circle->size(), QSizeF(96, 96));
    EXPECT_EQ(circle->property("radius"), 48);
    EXPECT_EQ(test::colorOf(circle), theme.panel());
    EXPECT_NEAR(middleOf(circle).x(), size.width() / 2, 1);
}

TEST_F(LibraryViewTest, ShowsNeitherCountNorEmptyStateBeforeLoading)
{
    makeThree();
    show();
    EXPECT_FALSE(shows(QStringLiteral("Henüz klip yok")));
    auto* count = textItem(QStringLiteral("0 klip • Discord'a paylaşmak için bir klibi sürükleyip bırakın"));
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->opacity(), 0);
    libraryTime.settle();
    settle(50);
    EXPECT_TRUE(shows(QStringLiteral("3 klip • Discord'a paylaşmak için bir klibi sürükleyip bırakın")));
    EXPECT_EQ(cardTitles().size(), 3);
}

TEST_F(LibraryViewTest, ShowsNoResultsOnlyForASearch)
{
    makeThree();
    open();
    search("xyz");
    EXPECT_TRUE(shows(QStringLiteral("Sonuç bulunamadı")));
    EXPECT_FALSE(shows(QStringLiteral("Henüz klip yok")));
    EXPECT_FALSE(shows(emptyHint()));
    EXPECT_FALSE(shows(QStringLiteral("Shift"))) << "no key caps either";
    key(Qt::Key_Escape);
    EXPECT_EQ(cardTitles().size(), 3);
    // An empty tier is not a search.
    click(item(QStringLiteral("Basit")));
    EXPECT_TRUE(shows(QStringLiteral("Henüz klip yok")));
    EXPECT_TRUE(shows(emptyHint()));
    EXPECT_TRUE(shows(QStringLiteral("0 klip • Discord'a paylaşmak için bir klibi sürükleyip bırakın")));
}

TEST_F(LibraryViewTest, HidesTheTierBarIfAllClipsAreManual)
{
    makeFile("Dota 2 - Ace.mp4");
    open();
    EXPECT_EQ(find(QStringLiteral("Efsane")), nullptr);
    makeFile("Dota 2 - 2026-03-01 20.15.07 [ORTA 45] Triple.mp4");
    reload();
    settle(50);
    EXPECT_NE(find(QStringLiteral("Efsane")), nullptr);
}

TEST_F(LibraryViewTest, FiltersByTierAndSearch)
{
    makeThree();
    open();
    click(item(QStringLiteral("Efsane")));
    EXPECT_EQ(cardTitles(), QStringList{QStringLiteral("PENTAKILL")});
    click(item(QStringLiteral("Manuel")));
    EXPECT_EQ(cardTitles(), (QStringList{QStringLiteral("League of Legends klibi"), QStringLiteral("Ace")}));
    search("dota");
    EXPECT_EQ(cardTitles(), QStringList{QStringLiteral("Ace")}) << "the search matches the game";
}

TEST_F(LibraryViewTest, TierBarMatchesDesign)
{
    makeThree();
    open();
    const auto* pills = item(QStringLiteral("Seviye"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(pills))->role(), QAccessible::Grouping);
    const auto* symbol = test::firstVisible(window, [](const QQuickItem* each) {
        return each->property("symbol").toString() == u"line.3.horizontal.decrease";
    });
    ASSERT_NE(symbol, nullptr);
    EXPECT_EQ(test::colorOf(symbol), theme.muted());
    EXPECT_EQ(symbol->mapToScene({0, 0}).x(), 28);
    EXPECT_EQ(pills->mapToScene({0, 0}).x() - symbol->mapToScene({symbol->width(), 0}).x(), 10);
    // The bar is below the header, and the first day is below the bar.
    const auto* header = itemsOf("LibraryHeader").value(0);
    const auto* count = textItem(QStringLiteral("3 klip • Discord'a paylaşmak için bir klibi sürükleyip bırakın"));
    EXPECT_EQ(header->height(), count->mapToScene({0, count->height()}).y() + 12);
    EXPECT_EQ(pills->mapToScene({0, 0}).y(), header->height());
    EXPECT_EQ(item(QStringLiteral("Bugün"))->mapToScene({0, 0}).y(), header->height() + pills->height() + 18);
}

TEST_F(LibraryViewTest, NewViewStartsWithoutFilters)
{
    makeThree();
    open();
    click(item(QStringLiteral("Manuel")));
    search("ace");
    ASSERT_EQ(cardTitles().size(), 1);
    engine.reset();
    show();
    EXPECT_EQ(cardTitles().size(), 3);
    EXPECT_EQ(item(QStringLiteral("Ara"))->property("text").toString(), QString());
    EXPECT_TRUE(item(QStringLiteral("Tümü"))->property("checked").toBool());
}

TEST_F(LibraryViewTest, TitleWithALineBreakTakesOneLine)
{
    makeFile("Dota\n2 - Ace.mp4");
    open(QStringLiteral("hasGame: true; game: 'Dota\\n2'"));
    const auto* title = textItem(QStringLiteral("Dota\n2"));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->property("lineCount"), 1);
    EXPECT_EQ(cardTitles(), QStringList{QStringLiteral("Ace")});
}

TEST_F(LibraryViewTest, GameViewShowsTheGamesName)
{
    makeThree();
    open(QStringLiteral("hasGame: true; game: 'Dota 2'"));
    EXPECT_EQ(test::fontOf(textItem(QStringLiteral("Dota 2"))).pixelSize(), 28);
    EXPECT_EQ(cardTitles(), QStringList{QStringLiteral("Ace")});
    EXPECT_NE(find(QStringLiteral("Efsane")), nullptr) << "the tier bar depends on the whole library";
}

TEST_F(LibraryViewTest, HeaderMatchesDesign)
{
    makeThree();
    open();
    const auto* title = textItem(QStringLiteral("Klipler"));
    EXPECT_EQ(title->mapToScene({0, 0}), QPointF(28, 38));
    EXPECT_EQ(test::fontOf(title).pixelSize(), 28);
    EXPECT_EQ(test::fontOf(title).weight(), QFont::ExtraBold);
    EXPECT_EQ(test::colorOf(title), theme.text());
    const auto* count = textItem(QStringLiteral("3 klip • Discord'a paylaşmak için bir klibi sürükleyip bırakın"));
    EXPECT_EQ(test::fontOf(count).pixelSize(), 12);
    EXPECT_EQ(test::colorOf(count), theme.muted());
    EXPECT_EQ(count->mapToScene({0, 0}).y(), 38 + title->height() + 4);
    const auto* field = item(QStringLiteral("Ara"));
    const auto* folderButton = item(QStringLiteral("Klasör"));
    EXPECT_EQ(field->width(), 170);
    EXPECT_EQ(folderButton->mapToScene({0, 0}).x() - field->mapToScene({170, 0}).x(), 8);
    EXPECT_EQ(folderButton->mapToScene({folderButton->width(), 0}).x(), size.width() - 28);
    EXPECT_EQ(test::placeOf(folderButton).top(), test::placeOf(field).top());
    EXPECT_EQ(folderButton->height(), field->height());
    const auto* day = item(QStringLiteral("Bugün"));
    EXPECT_EQ(test::fontOf(day).pixelSize(), 11);
    EXPECT_NEAR(test::fontOf(day).letterSpacing(), 1.3, 0.01);
    EXPECT_EQ(test::colorOf(day), theme.muted());
}

TEST_F(LibraryViewTest, ToolTipsShowNamesThatAreCut)
{
    const auto game = QStringLiteral("The Elder Scrolls V Skyrim Special Edition Anniversary Upgrade Part Two");
    const auto title = QStringLiteral("A clip with a title that is far too long for the width of one card of the page");
    makeFile((game + QStringLiteral(" - ") + title + QStringLiteral(".mp4")).toUtf8().constData());
    size = {600, 500};
    open(QStringLiteral("hasGame: true; game: '%1'").arg(game));
    const auto shown = [&](const QString& words) {
        int count = 0;
        test::visitVisible(window->contentItem(), [&](const QQuickItem* each) {
            count += each->inherits("QQuickText") && each->property("text").toString() == words ? 1 : 0;
        });
        return count;
    };
    ASSERT_EQ(shown(game), 2) << "the page's title and the card";
    ASSERT_EQ(shown(title), 1);
    QTest::mouseMove(window, middleOf(textItem(title)));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown(title) == 2; }));
    picture(QStringLiteral("library-tooltip"));
    QTest::mouseMove(window, middleOf(textItem(game)));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown(game) == 3; }));
    EXPECT_EQ(shown(title), 1);
    QTest::mouseMove(window, {5, 5});
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown(game) == 2; }));
    const auto* word = test::labelOn(itemsOf("ClipCard").value(0), game);
    QTest::mouseMove(window, middleOf(word));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown(game) == 3; }));
}

TEST_F(LibraryViewTest, OpensTheSaveFolder)
{
    open();
    click(item(QStringLiteral("Klasör")));
    EXPECT_EQ(files.opened, QStringList{settings.saveFolder()});
}

TEST_F(LibraryViewTest, CardShowsAndAnnouncesItsClip)
{
    makeThree();
    open();
    const auto* pentakill = card(QStringLiteral("PENTAKILL"));
    const auto* interface = QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(pentakill));
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::ListItem);
    EXPECT_TRUE(interface->text(QAccessible::Name).startsWith(QStringLiteral("PENTAKILL, League of Legends, ")));
    EXPECT_TRUE(shows(QStringLiteral("EFSANE 170")));
    EXPECT_EQ(test::colorOf(textItem(QStringLiteral("Dota 2"))), theme.accent());
    const auto* title = textItem(QStringLiteral("PENTAKILL"));
    EXPECT_EQ(test::fontOf(title).pixelSize(), 13);
    EXPECT_EQ(test::fontOf(title).weight(), QFont::DemiBold);
}

TEST_F(LibraryViewTest, ClickOpensTheClip)
{
    makeThree();
    open();
    click(card(QStringLiteral("Ace")));
    EXPECT_EQ(selectedName(), QStringLiteral("Dota 2 - Ace.mp4"));
}

TEST_F(LibraryViewTest, MenuButtonOpensTheMenuOnly)
{
    makeThree();
    open();
    auto buttons = itemsOf("ClipMenuButton");
    ASSERT_EQ(buttons.size(), 3);
    click(buttons.first());
    settle();
    EXPECT_FALSE(navigation.hasSelected());
    EXPECT_TRUE(shows(QStringLiteral("Klasörde Göster")));
    EXPECT_EQ(buttons.first()->size(), QSizeF(22, 22));
}

TEST_F(LibraryViewTest, ContextMenuHasFourEntriesInOrder)
{
    makeThree();
    open();
    click(card(QStringLiteral("Ace")), Qt::RightButton);
    settle();
    EXPECT_FALSE(navigation.hasSelected());
    QStringList entries;
    for (const auto* each : itemsOf("ThemedMenuItem")) {
        entries.append(each->property("text").toString());
    }
    EXPECT_EQ(entries,
              (QStringList{QStringLiteral("Oynat"), QStringLiteral("Dosyayı Kopyala (Discord'a yapıştır)"),
                           QStringLiteral("Klasörde Göster"), QStringLiteral("Çöp Kutusuna Taşı")}));
}

TEST_F(LibraryViewTest, MenuPlaysCopiesAndReveals)
{
    makeThree();
    open();
    const auto choose = [&](const char* entry) {
        click(card(QStringLiteral("Ace")), Qt::RightButton);
        settle();
        click(item(QString::fromUtf8(entry)));
        settle();
    };
    choose("Dosyayı Kopyala (Discord'a yapıştır)");
    EXPECT_EQ(pasteboard.file, path("Dota 2 - Ace.mp4"));
    EXPECT_EQ(navigation.toast(), QStringLiteral("Klip panoya kopyalandı — Discord'da Ctrl+V ile yapıştırın"));
    choose("Klasörde Göster");
    EXPECT_EQ(files.revealed, QStringList{path("Dota 2 - Ace.mp4")});
    choose("Oynat");
    EXPECT_EQ(selectedName(), QStringLiteral("Dota 2 - Ace.mp4"));
}

TEST_F(LibraryViewTest, TrashesOnlyAfterConfirmation)
{
    makeThree();
    open();
    const auto ask = [&] {
        click(card(QStringLiteral("Ace")), Qt::RightButton);
        settle();
        click(item(QStringLiteral("Çöp Kutusuna Taşı")));
        settle();
        EXPECT_TRUE(shows(QStringLiteral("Klip çöp kutusuna taşınsın mı?")));
    };
    ask();
    click(item(QStringLiteral("Vazgeç")));
    settle();
    EXPECT_FALSE(shows(QStringLiteral("Klip çöp kutusuna taşınsın mı?")));
    EXPECT_EQ(trash.calls, 0);
    ask();
    key(Qt::Key_Escape);
    settle();
    EXPECT_EQ(trash.calls, 0);
    ask();
    click(item(QStringLiteral("Çöp Kutusuna Taşı")));
    settle();
    EXPECT_EQ(trash.recycled, QStringList{path("Dota 2 - Ace.mp4")});
}

TEST_F(LibraryViewTest, CardGrowsOnHover)
{
    makeThree();
    open();
    auto* ace = card(QStringLiteral("Ace"));
    EXPECT_EQ(ace->scale(), 1);
    EXPECT_EQ(ace->z(), 0);
    EXPECT_FALSE(shows(QStringLiteral("Discord'a sürükle")));
    QTest::mouseMove(window, middleOf(ace));
    settle();
    EXPECT_DOUBLE_EQ(ace->scale(), 1.015);
    EXPECT_TRUE(shows(QStringLiteral("Discord'a sürükle")));
    // The card stays hovered while the pointer is on its button.
    for (const auto* button : itemsOf("ClipMenuButton")) {
        if (ace->contains(ace->mapFromItem(button, {1, 1}))) {
            QTest::mouseMove(window, middleOf(button));
        }
    }
    settle();
    EXPECT_DOUBLE_EQ(ace->scale(), 1.015);
    QTest::mouseMove(window, {5, 5});
    settle();
    EXPECT_EQ(ace->scale(), 1);
}

TEST_F(LibraryViewTest, NarrowCardShowsTheDragHintWithoutText)
{
    makeFile("Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] Ace (9x16).mp4");
    open();
    QTest::mouseMove(window, middleOf(card(QStringLiteral("Ace (9x16)"))));
    settle();
    EXPECT_FALSE(shows(QStringLiteral("Discord'a sürükle")));
    EXPECT_EQ(itemsOf("ClipHover").size(), 1);
}

TEST_F(LibraryViewTest, DragCarriesTheFileAndDoesNotOpenIt)
{
    makeThree();
    open();
    const auto start = middleOf(card(QStringLiteral("Ace")));
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    QTest::mouseMove(window, start + QPoint(3, 0));
    settle(50);
    EXPECT_TRUE(dragged.isEmpty()) << "a small movement does not start a drag";
    // Vertically, in the direction of a flick.
    for (int y = 10; y <= 60; y += 10) {
        QTest::mouseMove(window, start + QPoint(0, y));
    }
    settle(50);
    EXPECT_EQ(dragged, QStringList{path("Dota 2 - Ace.mp4")});
    QTest::mouseRelease(window, Qt::LeftButton, {}, start + QPoint(0, 60));
    settle(50);
    EXPECT_FALSE(navigation.hasSelected());
    EXPECT_EQ(dragged.size(), 1);
    EXPECT_TRUE(draggedPicture.isNull()) << "a broken file is dragged without a picture";
}

class ScrolledLibraryTest : public LibraryViewTest {
protected:
    void SetUp() override
    {
        LibraryViewTest::SetUp();
        for (int i = 0; i < 120; ++i) {
            makeFile(QStringLiteral("Dota 2 - Nr %1.mp4").arg(i, 3, 10, QLatin1Char('0')).toUtf8().constData(), i * 60);
        }
        open();
        grid = itemsOf("CardGrid").value(0);
        ASSERT_NE(grid, nullptr);
        flick = grid->findChild<QQuickItem*>(QStringLiteral("cards"));
        ASSERT_NE(flick, nullptr);
    }

    qreal contentY() const { return grid->property("contentY").toReal(); }

    void wheel(int angle)
    {
        const auto middle = middleOf(grid);
        QWheelEvent event(middle, window->mapToGlobal(middle), {}, {0, angle}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(window, &event);
        settle(350);
    }

    QQuickItem* grid = nullptr;
    /// The Flickable in the grid.
    QQuickItem* flick = nullptr;
};

TEST_F(ScrolledLibraryTest, MouseDragsCardsNotTheView)
{
    const auto start = middleOf(grid);
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    for (int y = 10; y <= 200; y += 10) {
        QTest::mouseMove(window, start - QPoint(0, y));
        settle(5);
    }
    QTest::mouseRelease(window, Qt::LeftButton, {}, start - QPoint(0, 200));
    settle(300);
    EXPECT_EQ(contentY(), 0);
}

TEST_F(ScrolledLibraryTest, TouchFlicksTheView)
{
    auto* finger = QTest::createTouchDevice();
    const auto start = middleOf(grid);
    QTest::touchEvent(window, finger).press(0, start);
    for (int y = 10; y <= 200; y += 10) {
        settle(5);
        QTest::touchEvent(window, finger).move(0, start - QPoint(0, y));
    }
    QTest::touchEvent(window, finger).release(0, start - QPoint(0, 200));
    settle(300);
    EXPECT_GT(contentY(), 100);
    EXPECT_FALSE(navigation.hasSelected());
    EXPECT_TRUE(dragged.isEmpty());
}

TEST_F(ScrolledLibraryTest, WheelScrollsByNotchesAndStopsAtTheEnds)
{
    wheel(-120);
    EXPECT_NEAR(contentY(), 110, 1);
    wheel(-240);
    EXPECT_NEAR(contentY(), 330, 1);
    wheel(1200);
    EXPECT_EQ(contentY(), 0);
    wheel(-120'000);
    EXPECT_NEAR(contentY(), grid->property("contentHeight").toReal() - grid->height(), 1);
}

TEST_F(ScrolledLibraryTest, KeysMoveTheCurrentCardAndScrollToIt)
{
    EXPECT_TRUE(grid->hasActiveFocus());
    key(Qt::Key_End);
    EXPECT_GT(contentY(), 1000);
    EXPECT_TRUE(cardTitles().contains(QStringLiteral("Nr 119")));
    key(Qt::Key_Return);
    EXPECT_EQ(selectedName(), QStringLiteral("Dota 2 - Nr 119.mp4"));
    navigation.closeClip();
    key(Qt::Key_Home);
    EXPECT_EQ(contentY(), 0);
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(selectedName(), QStringLiteral("Dota 2 - Nr 004.mp4"));
}

TEST_F(ScrolledLibraryTest, HeldKeyMovesButDoesNotOpen)
{
    const auto repeat = [this](Qt::Key key) { QTest::simulateEvent(window, true, key, {}, {}, true); };
    key(Qt::Key_Home);
    repeat(Qt::Key_Right);
    repeat(Qt::Key_Return);
    EXPECT_FALSE(navigation.hasSelected());
    key(Qt::Key_Return);
    EXPECT_EQ(selectedName(), QStringLiteral("Dota 2 - Nr 001.mp4"));
}

TEST_F(ScrolledLibraryTest, KeysTrashCopyAndOpenTheMenu)
{
    key(Qt::Key_Home);
    key(Qt::Key_Right);
    QMetaObject::invokeMethod(window->focusObject(), "copy");
    EXPECT_EQ(pasteboard.file, path("Dota 2 - Nr 001.mp4"));
    key(Qt::Key_Menu);
    settle();
    EXPECT_TRUE(shows(QStringLiteral("Klasörde Göster")));
    key(Qt::Key_Escape);
    settle();
    key(Qt::Key_F10, Qt::ShiftModifier);
    settle();
    EXPECT_TRUE(shows(QStringLiteral("Klasörde Göster")));
    key(Qt::Key_Escape);
    settle();
    EXPECT_TRUE(grid->hasActiveFocus()) << "closing the menu restores the focus";
    key(Qt::Key_Delete);
    settle();
    EXPECT_TRUE(shows(QStringLiteral("Klip çöp kutusuna taşınsın mı?")));
    key(Qt::Key_Return);
    settle();
    EXPECT_EQ(trash.calls, 0) << "the cancel button has the initial focus";
    key(Qt::Key_Delete);
    settle();
    key(Qt::Key_Right);
    key(Qt::Key_Return);
    settle();
    EXPECT_EQ(trash.recycled, QStringList{path("Dota 2 - Nr 001.mp4")});
}

TEST_F(ScrolledLibraryTest, EscapeClearsTheSearchThenLeavesIt)
{
    key(Qt::Key_F, Qt::ControlModifier);
    auto* field = item(QStringLiteral("Ara"));
    EXPECT_TRUE(field->hasActiveFocus());
    type("nr 11");
    EXPECT_TRUE(shows(QStringLiteral("10 klip • Discord'a paylaşmak için bir klibi sürükleyip bırakın")));
    key(Qt::Key_Escape);
    EXPECT_EQ(field->property("text").toString(), QString());
    EXPECT_TRUE(field->hasActiveFocus());
    key(Qt::Key_Escape);
    EXPECT_TRUE(grid->hasActiveFocus());
}

TEST_F(ScrolledLibraryTest, EnterAndDownMoveFromTheSearchToTheResults)
{
    for (const auto each : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
        item(QStringLiteral("Ara"))->forceActiveFocus();
        key(each);
        EXPECT_TRUE(grid->hasActiveFocus()) << each;
    }
}

TEST_F(LibraryViewTest, FocusStaysInTheSearchFieldWithoutCards)
{
    open();
    search("a");
    const auto* field = item(QStringLiteral("Ara"));
    for (const auto each : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Escape, Qt::Key_Escape, Qt::Key_Escape}) {
        key(each);
        EXPECT_EQ(window->activeFocusItem(), field) << each;
    }
    EXPECT_EQ(field->property("text").toString(), QString());
}

TEST_F(ScrolledLibraryTest, ScrollBarIsVisibleWhileTheViewScrolls)
{
    const auto* bar = itemsOf("ThemedScrollBar").value(0);
    ASSERT_NE(bar, nullptr);
    const auto opacity = [&] { return bar->property("contentItem").value<QQuickItem*>()->opacity(); };
    QTest::mouseMove(window, {5, 5});
    EXPECT_EQ(opacity(), 0);
    wheel(-120);
    EXPECT_TRUE(QTest::qWaitFor([&] { return opacity() == 1; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return opacity() == 0; })) << "it hides when the view rests";
    key(Qt::Key_End);
    EXPECT_TRUE(QTest::qWaitFor([&] { return opacity() == 1; }));
    picture(QStringLiteral("library-scrolling"));
}

TEST_F(ScrolledLibraryTest, TabMovesFromSearchToFolderButtonToGrid)
{
    item(QStringLiteral("Ara"))->forceActiveFocus();
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(QStringLiteral("Klasör"))->hasActiveFocus());
    key(Qt::Key_Tab);
    EXPECT_TRUE(grid->hasActiveFocus());
    key(Qt::Key_Tab);
    EXPECT_FALSE(grid->hasActiveFocus()) << "the grid is one tab stop";
}

TEST_F(ScrolledLibraryTest, OpenMenuClosesWithItsCard)
{
    key(Qt::Key_Home);
    key(Qt::Key_Menu);
    settle();
    EXPECT_TRUE(shows(QStringLiteral("Oynat")));
    QFile::remove(path("Dota 2 - Nr 000.mp4"));
    reload();
    settle();
    EXPECT_FALSE(shows(QStringLiteral("Oynat"))) << "the menu would act on another clip";
}

TEST_F(ScrolledLibraryTest, ScrollingCreatesNoItems)
{
    const auto itemCount = [&] { return flick->property("contentItem").value<QQuickItem*>()->childItems().size(); };
    const auto before = itemCount();
    for (int y = 0; y < 3000; y += 130) {
        flick->setProperty("contentY", y);
        settle(1);
    }
    EXPECT_EQ(itemCount(), before);
    EXPECT_LT(before, 40);
}

} // namespace
} // namespace quelto
