// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/screens/library/LibraryScreenFixture.h"

namespace quelto {
namespace {

/// Two selectable cards, on a bright and on a dark picture. They record their requests.
class SelectableCardTest : public test::LibraryScreenFixture {
protected:
    void SetUp() override
    {
        LibraryScreenFixture::SetUp();
        setClipReader([](const QString& path) {
            ClipPreview reading;
            reading.info.duration = 65;
            reading.thumbnail = QImage(64, 36, QImage::Format_RGB32);
            reading.thumbnail.fill(path.contains(u"Bright") ? Qt::white : Qt::black);
            return reading;
        });
        size = {700, 340};
        showItems(QStringLiteral(
            "Row { x: 20; y: 40; spacing: 20\n"
            "component Sample: ClipCard {\n"
            "property string requests: \"\"\n"
            "property string nextPath: path\n"
            "width: 300; height: implicitHeight; game: \"Dota 2\"; time: \"20:15\"\n"
            "size: \"12 MB\"; tier: \"EFSANE\"; label: \"Efsane\"; score: 95\n"
            "isSelectable: true\n"
            "onOpenRequested: requests += \"open \"\n"
            "onToggleRequested: { requests += \"toggle \"; isSelected = !isSelected; path = nextPath } }\n"
            "Sample { title: \"Bright\"; path: \"/clips/Dota 2 - Bright.mp4\" }\n"
            "Sample { title: \"Dark\"; path: \"/clips/Dota 2 - Dark.mp4\" } }"));
        QList<QQuickItem*> cards;
        test::visitVisible(window->contentItem(), [&](QQuickItem* each) {
            if (each->property("requests").isValid()) {
                cards.append(each);
            }
        });
        ASSERT_EQ(cards.size(), 2);
        bright = cards.at(0);
        dark = cards.at(1);
    }

    static QString requestsOf(const QQuickItem* card) { return card->property("requests").toString(); }
    static bool isSelected(const QQuickItem* card) { return card->property("isSelected").toBool(); }
    static QQuickItem* symbol(QQuickItem* card, const char* name)
    {
        return test::firstVisibleOn(
            card, [&](const QQuickItem* each) { return each->property("symbol").toString() == QLatin1String(name); });
    }
    /// The middle of the thumbnail.
    static QPoint pictureOf(const QQuickItem* card) { return card->mapToScene({150, 84}).toPoint(); }

    QQuickItem* bright = nullptr;
    QQuickItem* dark = nullptr;
};

TEST_F(SelectableCardTest, ClickTogglesAtOnce)
{
    click(dark);
    EXPECT_EQ(requestsOf(dark), QStringLiteral("toggle "));
    EXPECT_TRUE(isSelected(dark));
    click(dark);
    EXPECT_EQ(requestsOf(dark), QStringLiteral("toggle toggle "));
    EXPECT_FALSE(isSelected(dark));
    EXPECT_EQ(requestsOf(bright), QString());
}

TEST_F(SelectableCardTest, DoubleClickOpensAndLeavesTheSelectionAsItWas)
{
    for (const bool wasSelected : {false, true}) {
        dark->setProperty("isSelected", wasSelected);
        dark->setProperty("requests", QString());
        QTest::mouseDClick(window, Qt::LeftButton, {}, pictureOf(dark));
        EXPECT_EQ(requestsOf(dark), QStringLiteral("toggle toggle open "));
        EXPECT_EQ(isSelected(dark), wasSelected);
    }
}

TEST_F(SelectableCardTest, ClicksOnTwoClipsInOnePlaceAreNoDoubleClick)
{
    // The first click removes its clip, and the next clip takes its place.
    dark->setProperty("nextPath", QStringLiteral("/clips/Dota 2 - Next.mp4"));
    QTest::mouseDClick(window, Qt::LeftButton, {}, pictureOf(dark));
    EXPECT_EQ(requestsOf(dark), QStringLiteral("toggle toggle "));
}

TEST_F(SelectableCardTest, MarkShowsTheSelection)
{
    const auto* empty = symbol(bright, "circle");
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(test::colorOf(empty), theme.onAccent());
    EXPECT_EQ(symbol(bright, "checkmark.circle.fill"), nullptr);
    const auto plate = test::placeOf(test::enclosingRectangle(empty));
    EXPECT_EQ(plate.top(), test::placeOf(bright).top() + 8);
    EXPECT_EQ(plate.right(), test::placeOf(bright).right() - 8);
    bright->setProperty("isSelected", true);
    const auto* mark = symbol(bright, "checkmark.circle.fill");
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(test::colorOf(mark), theme.accent());
    EXPECT_EQ(symbol(bright, "circle"), nullptr);
}

TEST_F(SelectableCardTest, MarkIsLegibleOnAnyPicture)
{
    settle();
    const auto image = window->grabWindow();
    for (auto* card : {bright, dark}) {
        const auto* ring = symbol(card, "circle");
        ASSERT_NE(ring, nullptr);
        const auto top = ring->mapToScene({ring->width() / 2, 0}).toPoint();
        int brightest = 0;
        int darkest = 255;
        // From the edge of the plate through the ring to the middle.
        for (int y = 0; y < 11; ++y) {
            const auto gray = qGray(image.pixel(top + QPoint(0, y)));
            brightest = std::max(brightest, gray);
            darkest = std::min(darkest, gray);
        }
        EXPECT_GT(brightest, 200);
        EXPECT_LT(darkest, 110);
    }
}

TEST_F(SelectableCardTest, SelectedCardHasAnAccentOutline)
{
    const auto outline = [&] {
        QQuickItem* last = nullptr;
        for (auto* child : dark->childItems()) {
            if (child->inherits("QQuickRectangle")) {
                last = child;
            }
        }
        return test::outlineOf(last);
    };
    EXPECT_EQ(outline().color, theme.border());
    EXPECT_EQ(outline().width, 1);
    dark->setProperty("isSelected", true);
    settle();
    EXPECT_EQ(outline().color, theme.accent());
    EXPECT_EQ(outline().width, 2);
    picture(QStringLiteral("card-selection"));
}

TEST_F(SelectableCardTest, HoverMarksTheCardAndOffersNoPlay)
{
    // The pointer may already be there from the last test; moving it away first makes sure that it moves.
    QTest::mouseMove(window, {5, 5});
    QTest::mouseMove(window, pictureOf(dark));
    settle();
    EXPECT_DOUBLE_EQ(dark->scale(), 1.015);
    EXPECT_EQ(symbol(dark, "play.fill"), nullptr);
    EXPECT_EQ(symbol(dark, "hand.draw.fill"), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Tıkla: seç • Çift tıkla: oynat")); }));
    picture(QStringLiteral("card-selection-hover"));
}

TEST_F(SelectableCardTest, MenuAndDragLeaveTheSelectionAlone)
{
    click(dark, Qt::RightButton);
    settle();
    EXPECT_TRUE(shows(QStringLiteral("Klasörde Göster")));
    key(Qt::Key_Escape);
    settle();
    const auto start = pictureOf(dark);
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    for (int y = 10; y <= 60; y += 10) {
        QTest::mouseMove(window, start + QPoint(0, y));
    }
    settle(50);
    QTest::mouseRelease(window, Qt::LeftButton, {}, start + QPoint(0, 60));
    EXPECT_EQ(dragged, QStringList(QStringLiteral("/clips/Dota 2 - Dark.mp4")));
    EXPECT_EQ(requestsOf(dark), QString());
}

TEST_F(SelectableCardTest, ScreenReaderHearsAndChangesTheSelection)
{
    auto* const interface = QAccessible::queryAccessibleInterface(dark);
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::ListItem);
    EXPECT_TRUE(interface->state().checkable);
    EXPECT_FALSE(interface->state().checked);
    EXPECT_EQ(interface->text(QAccessible::Description), QStringLiteral("Tıkla: seç • Çift tıkla: oynat"));
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(isSelected(dark));
    EXPECT_TRUE(interface->state().checked);
    EXPECT_EQ(requestsOf(dark), QStringLiteral("toggle "));
    dark->setProperty("isSelectable", false);
    EXPECT_FALSE(interface->state().checkable);
}

} // namespace
} // namespace quelto
