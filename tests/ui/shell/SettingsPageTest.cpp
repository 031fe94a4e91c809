// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/SettingsFixture.h"

namespace quelto::test {
namespace {

using namespace std::chrono_literals;

class SettingsPageTest : public SettingsFixture {
protected:
    bool isHighlighted(const char* title) const
    {
        const auto* anchor = card(title)->parentItem()->parentItem();
        return anchor->property("state").toString() == QStringLiteral("highlighted");
    }
    /// Opens a section of the sidebar and lets the jump end.
    void jumpTo(const char* title)
    {
        clickOn(section(title));
        time.advance(110ms);
        drawFrame();
    }
    void key(Qt::Key pressed) const
    {
        QTest::keyClick(window, pressed);
        QCoreApplication::processEvents();
    }
};

TEST_F(SettingsPageTest, IsShownFromTheSidebar)
{
    navigation->showLibrary();
    drawFrame();
    click(QStringLiteral("Ayarlar"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("GÖRÜNÜM")); }));
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Settings);
    EXPECT_TRUE(
        shows(QStringLiteral("Değişiklikler otomatik kaydedilir; kayıt gerekirse kendiliğinden yeniden başlar.")));
}

TEST_F(SettingsPageTest, HasNineCardsInOrder)
{
    double last = 0;
    for (const auto* title :
         {"Görünüm", "Klip", "Kayıt", "Oto Klip", "Maç Özeti", "Ses", "Kısayol", "Depolama & Paylaşım", "Genel"}) {
        ASSERT_NE(card(title), nullptr) << title;
        EXPECT_GT(topOf(card(title)), last) << title;
        last = topOf(card(title));
    }
}

TEST_F(SettingsPageTest, SidebarGroupsTheSections)
{
    QStringList texts;
    visitVisible(window->contentItem(), [&](QQuickItem* each) {
        const auto* interface = QAccessible::queryAccessibleInterface(each);
        if (interface != nullptr && interface->role() == QAccessible::PageTab) {
            texts.append(interface->text(QAccessible::Name));
        }
    });
    EXPECT_EQ(texts.join(u'|').toStdString(), "Görünüm|Klip|Kayıt|Oto Klip|Maç Özeti|Ses|Kısayol|Depolama|Genel");
    for (const auto* heading : {"KİŞİSELLEŞTİRME", "OYUNLAR", "UYGULAMA"}) {
        EXPECT_TRUE(shows(QString::fromUtf8(heading))) << heading;
    }
    EXPECT_TRUE(isLit("Görünüm"));
}

TEST_F(SettingsPageTest, SidebarFollowsTheCards)
{
    const auto clipTop = topOf(card("Klip"));
    scrollTo(clipTop - 61);
    EXPECT_TRUE(isLit("Görünüm"));
    scrollTo(clipTop - 60);
    EXPECT_TRUE(isLit("Klip"));
    EXPECT_FALSE(isLit("Görünüm"));
    scrollTo(0);
    EXPECT_TRUE(isLit("Görünüm"));
}

TEST_F(SettingsPageTest, ClickOnASectionBringsItsCardToTheTop)
{
    jumpTo("Ses");
    EXPECT_TRUE(isLit("Ses"));
    EXPECT_TRUE(isHighlighted("Ses"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::abs(topOf(card("Ses"))) < 0.5; }));
    time.advance(700ms);
    EXPECT_FALSE(isHighlighted("Ses"));
}

TEST_F(SettingsPageTest, LastSectionReachesTheTop)
{
    for (const auto size : {QSize(1020, 640), QSize(1240, 780), QSize(1920, 1080), QSize(1240, 6000)}) {
        window->resize(size);
        QTest::qWait(50);
        jumpTo("Görünüm");
        jumpTo("Genel");
        EXPECT_TRUE(isLit("Genel")) << size.height();
        EXPECT_TRUE(QTest::qWaitFor([&] { return std::abs(topOf(card("Genel"))) < 0.5; })) << size.height();
    }
}

TEST_F(SettingsPageTest, ClickOnTheLitSectionOnlyHighlightsItsCard)
{
    scrollTo(30);
    jumpTo("Görünüm");
    EXPECT_EQ(position(), 30);
    EXPECT_TRUE(isHighlighted("Görünüm"));
}

TEST_F(SettingsPageTest, CardsFadeOutAndComeBack)
{
    const auto* column = card("Ses")->parentItem()->parentItem()->parentItem();
    clickOn(section("Ses"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return column->opacity() == 0; }));
    EXPECT_EQ(position(), 0);
    time.advance(110ms);
    EXPECT_GT(position(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return column->opacity() == 1; }));
}

TEST_F(SettingsPageTest, PageMayBeLeftDuringAJump)
{
    clickOn(section("Ses"));
    navigation->showLibrary();
    time.advance(10s);
    openPage();
    EXPECT_EQ(position(), 0);
    EXPECT_TRUE(isLit("Görünüm"));
}

TEST_F(SettingsPageTest, ReturnStartsAtTheTop)
{
    scrollTo(900);
    navigation->showLibrary();
    drawFrame();
    openPage();
    EXPECT_EQ(position(), 0);
    EXPECT_TRUE(isLit("Görünüm"));
}

TEST_F(SettingsPageTest, SidebarIsOneTabStopWithArrowKeys)
{
    section("Görünüm")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Down);
    EXPECT_EQ(window->activeFocusItem(), section("Klip"));
    EXPECT_TRUE(isLit("Görünüm"));
    key(Qt::Key_End);
    EXPECT_EQ(window->activeFocusItem(), section("Genel"));
    key(Qt::Key_Down);
    EXPECT_EQ(window->activeFocusItem(), section("Genel"));
    key(Qt::Key_Up);
    EXPECT_EQ(window->activeFocusItem(), section("Depolama"));
    key(Qt::Key_Return);
    time.advance(110ms);
    EXPECT_TRUE(isLit("Depolama"));
    key(Qt::Key_Home);
    EXPECT_EQ(window->activeFocusItem(), section("Görünüm"));
    key(Qt::Key_Tab);
    EXPECT_TRUE(window->activeFocusItem()->inherits("QQuickRadioButton"));
    QTest::keyClick(window, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(window->activeFocusItem(), section("Görünüm"));
}

TEST_F(SettingsPageTest, TabReachesEveryControlAndScrollsToIt)
{
    section("Görünüm")->forceActiveFocus(Qt::TabFocusReason);
    QSet<QQuickItem*> seen;
    bool sawLast = false;
    for (int i = 0; i < 120 && !sawLast; ++i) {
        key(Qt::Key_Tab);
        auto* focused = window->activeFocusItem();
        seen.insert(focused);
        const auto top = topOf(focused);
        EXPECT_GE(top, -1);
        EXPECT_LE(top + focused->height(), window->height() + 1);
        sawLast = focused == find(QAccessible::CheckBox, QStringLiteral("Girişte başlat"));
    }
    EXPECT_TRUE(sawLast);
    EXPECT_TRUE(seen.contains(menu("Ekran")));
    EXPECT_TRUE(seen.contains(menu("Dil")));
}

TEST_F(SettingsPageTest, WheelScrolls)
{
    const auto at = view()->mapToScene({300, 300}).toPoint();
    QWheelEvent event(at, at, {}, {0, -240}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &event);
    EXPECT_TRUE(QTest::qWaitFor([&] { return position() > 100; }));
}

TEST_F(SettingsPageTest, NewColoursKeepThePlaceAndTheFocus)
{
    auto* swatch = find(QAccessible::RadioButton, QStringLiteral("Orman"));
    scrollTo(60);
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(swatch));
    EXPECT_EQ(settings.colorTheme(), QStringLiteral("forest"));
    QTest::qWait(150);
    drawFrame();
    EXPECT_EQ(position(), 60);
    auto* focused = window->activeFocusItem();
    EXPECT_EQ(focused, find(QAccessible::RadioButton, QStringLiteral("Orman")));
    EXPECT_FALSE(focused->property("visualFocus").toBool());
    // By keyboard to the next one.
    key(Qt::Key_Right);
    key(Qt::Key_Space);
    EXPECT_EQ(settings.colorTheme(), QStringLiteral("sunset"));
    QTest::qWait(150);
    drawFrame();
    focused = window->activeFocusItem();
    EXPECT_EQ(focused, find(QAccessible::RadioButton, QStringLiteral("Gün Batımı")));
    EXPECT_TRUE(focused->property("visualFocus").toBool());
}

TEST_F(SettingsPageTest, NewLanguageKeepsThePlaceAndTheFocus)
{
    jumpTo("Genel");
    clickOn(menu("Dil"));
    clickOn(find(QAccessible::ListItem, QStringLiteral("Deutsch")));
    EXPECT_EQ(settings.language(), QStringLiteral("de"));
    QTest::qWait(150);
    drawFrame();
    auto* language = find(QAccessible::ComboBox, QStringLiteral("Sprache"));
    ASSERT_NE(language, nullptr);
    EXPECT_EQ(window->activeFocusItem(), language);
    EXPECT_NEAR(topOf(card("Allgemein")), 0, 0.5);
    EXPECT_TRUE(isLit("Allgemein"));
}

TEST_F(SettingsPageTest, ChangedColoursElsewhereLeaveOtherPagesAtTheTop)
{
    scrollTo(700);
    navigation->showLibrary();
    settings.setColorTheme(QStringLiteral("ocean"));
    QTest::qWait(150);
    openPage();
    EXPECT_EQ(position(), 0);
}

TEST_F(SettingsPageTest, ColoursChangedOnTheWayOutLeaveNoPlace)
{
    scrollTo(700);
    settings.setColorTheme(QStringLiteral("ocean"));
    navigation->showLibrary();
    QTest::qWait(150);
    openPage();
    EXPECT_EQ(position(), 0);
}

TEST_F(SettingsPageTest, PageKeysScroll)
{
    section("Görünüm")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_PageDown);
    EXPECT_EQ(position(), view()->height() - 60);
    key(Qt::Key_PageDown);
    key(Qt::Key_PageUp);
    key(Qt::Key_PageUp);
    EXPECT_EQ(position(), 0);
}

TEST_F(SettingsPageTest, EscapeClosesAMenuBeforeThePage)
{
    use(menu("Ekran"));
    ASSERT_NE(find(QAccessible::ListItem, QStringLiteral("Ana ekran")), nullptr);
    key(Qt::Key_Escape);
    EXPECT_EQ(find(QAccessible::ListItem, QStringLiteral("Ana ekran")), nullptr);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Settings);
    key(Qt::Key_Escape);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Library);
}

TEST_F(SettingsPageTest, SectionsLookAsTheyAre)
{
    const auto titleOf = [&](const char* title) { return labelOn(section(title), QString::fromUtf8(title)); };
    EXPECT_EQ(section("Klip")->width(), 196 - 20);
    EXPECT_EQ(fontOf(titleOf("Görünüm")).weight(), QFont::DemiBold);
    EXPECT_EQ(fontOf(titleOf("Klip")).weight(), QFont::Medium);
    EXPECT_EQ(fontOf(titleOf("Klip")).pixelSize(), 13);
    EXPECT_EQ(colorOf(symbolOn(section("Görünüm"))), theme->accent());
    EXPECT_EQ(colorOf(symbolOn(section("Klip"))), theme->muted());
    // The pointer over a section that is not lit.
    QTest::mouseMove(window, middleOf(section("Klip")));
    auto* hovered = section("Klip")->property("background").value<QQuickItem*>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::abs(hovered->opacity() - 0.6) < 0.01; }));
    EXPECT_EQ(colorOf(hovered), theme->card());
    EXPECT_EQ(section("Görünüm")->property("background").value<QQuickItem*>()->opacity(), 0);
    // Its mark moves to the section that is lit.
    auto* mark = firstVisible(window, [&](const QQuickItem* each) {
        return each->inherits("QQuickRectangle") && each->height() == section("Klip")->height() &&
            each->parentItem()->parentItem()->inherits("QQuickFlickable");
    });
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(topOf(mark), topOf(section("Görünüm")));
    jumpTo("Ses");
    EXPECT_TRUE(QTest::qWaitFor([&] { return topOf(mark) == topOf(section("Ses")); }));
}

TEST_F(SettingsPageTest, RingSurroundsTheHighlightedCard)
{
    jumpTo("Kayıt");
    QTest::qWait(200);
    const auto* anchor = card("Kayıt")->parentItem()->parentItem();
    auto* ring = firstVisibleOn(const_cast<QQuickItem*>(anchor), [&](const QQuickItem* each) {
        return each->inherits("QQuickRectangle") && colorOf(each) == QColor(Qt::transparent);
    });
    ASSERT_NE(ring, nullptr);
    EXPECT_EQ(placeOf(ring), placeOf(card("Kayıt")));
    EXPECT_EQ(outlineOf(ring).width, 2);
    EXPECT_EQ(outlineOf(ring).color, theme->accent());
    EXPECT_EQ(radiusOf(ring), 10);
    picture(QStringLiteral("settings-highlight"));
}

TEST_F(SettingsPageTest, LowWindowScrollsTheSidebar)
{
    window->setMinimumSize({});
    window->resize(1020, 300);
    QTest::qWait(50);
    section("Görünüm")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_End);
    drawFrame();
    EXPECT_LE(topOf(section("Genel")) + section("Genel")->height(), 300);
}

} // namespace
} // namespace quelto::test
