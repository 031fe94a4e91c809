// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/screens/library/LibraryScreenFixture.h"

#include <QEasingCurve>

namespace quelto {
namespace {

using test::colorOf;
using test::fontOf;
using test::outlineOf;
using test::radiusOf;
using test::withOpacity;

/// One card of a clip whose thumbnail and duration the test provides.
class ClipCardTest : public test::LibraryScreenFixture {
protected:
    void SetUp() override
    {
        LibraryScreenFixture::SetUp();
        reading.info.duration = 65;
        reading.thumbnail = QImage(64, 36, QImage::Format_RGB32);
        reading.thumbnail.fill(Qt::darkGreen);
        setClipReader([this](const QString&) { return reading; });
    }

    QQuickItem* open(const char* file = "Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] Ace.mp4")
    {
        makeFile(file);
        reload();
        show();
        settle(100);
        return itemsOf("ClipCard").value(0);
    }

    /// The visible items of that Qt type below the root, in paint order.
    QList<QQuickItem*> itemsOfType(QQuickItem* root, const char* qtType) const
    {
        QList<QQuickItem*> items;
        test::visitVisible(root, [&](QQuickItem* each) {
            if (each->inherits(qtType)) {
                items.append(each);
            }
        });
        return items;
    }
    QList<QQuickItem*> rectangles(QQuickItem* root) const { return itemsOfType(root, "QQuickRectangle"); }
    QQuickItem* rectangleOf(QQuickItem* root, const QColor& color) const
    {
        for (auto* box : rectangles(root)) {
            if (colorOf(box) == color) {
                return box;
            }
        }
        ADD_FAILURE() << "no rectangle has the color " << color.name(QColor::HexArgb).toStdString();
        return nullptr;
    }
    QQuickItem* symbol(QQuickItem* root, const char* name) const
    {
        QQuickItem* found = nullptr;
        test::visitVisible(root, [&](QQuickItem* each) {
            if (each->property("symbol").toString() == QLatin1String(name)) {
                found = each;
            }
        });
        return found;
    }
    static QRectF areaIn(const QQuickItem* root, const QQuickItem* item)
    {
        return item->mapRectToItem(root, QRectF({}, item->size()));
    }
    void hover(QQuickItem* item)
    {
        // The pointer may already be there from the last test; moving it away first makes sure that it moves.
        QTest::mouseMove(window, {5, 5});
        QTest::mouseMove(window, middleOf(item));
        settle();
    }

    ClipPreview reading;
};

TEST_F(ClipCardTest, BackgroundAndOutlineChangeOnHover)
{
    auto* card = open();
    const auto* ground = rectangles(card).first();
    auto* outline = rectangles(card).last();
    for (const auto* box : {ground, static_cast<const QQuickItem*>(outline)}) {
        EXPECT_EQ(areaIn(card, box), QRectF({}, card->size()));
        EXPECT_EQ(radiusOf(box), 8);
    }
    EXPECT_EQ(colorOf(ground), theme.card());
    EXPECT_EQ(outlineOf(outline).color, theme.border());
    EXPECT_EQ(outlineOf(outline).width, 1);
    hover(card);
    EXPECT_EQ(colorOf(ground), theme.cardHover());
    EXPECT_EQ(outlineOf(outline).color, withOpacity(theme.accent(), 0.7));
}

TEST_F(ClipCardTest, IsMarkedWhileItsMenuIsOpen)
{
    auto* card = open();
    const auto* ground = rectangles(card).first();
    const auto* outline = rectangles(card).last();
    click(card, Qt::RightButton);
    // Away from the card, to an entry of the menu.
    auto* entry = item(QStringLiteral("Çöp Kutusuna Taşı"));
    ASSERT_NE(entry, nullptr);
    QTest::mouseMove(window, {5, 5});
    settle();
    EXPECT_EQ(colorOf(ground), theme.cardHover());
    EXPECT_EQ(outlineOf(outline).color, withOpacity(theme.accent(), 0.7));
    EXPECT_EQ(textItem(QStringLiteral("Discord'a sürükle")), nullptr) << "only the pointer shows the hint";
    picture(QStringLiteral("library-card-with-menu"));
    key(Qt::Key_Escape);
    settle();
    EXPECT_EQ(colorOf(ground), theme.card());
    EXPECT_EQ(outlineOf(outline).color, theme.border());
}

TEST_F(ClipCardTest, HoverAnimationsTake120Milliseconds)
{
    auto* card = open();
    // The animations are created on first use.
    hover(card);
    const auto animations = test::animationsOf(card);
    EXPECT_EQ(animations.size(), 3) << "scale, background and outline";
    for (const auto* each : animations) {
        EXPECT_EQ(each->property("duration"), 120);
        EXPECT_EQ(each->property("easing").value<QEasingCurve>().type(), QEasingCurve::OutQuad);
    }
}

TEST_F(ClipCardTest, HoverDimsTheThumbnailAndShowsAPlaySymbol)
{
    auto* card = open();
    EXPECT_EQ(symbol(card, "play.fill"), nullptr);
    hover(card);
    const auto pictureHeight = std::round(card->width() * 9 / 16);
    auto* veil = rectangleOf(card, withOpacity(theme.shadow(), 0.35));
    ASSERT_NE(veil, nullptr);
    EXPECT_EQ(veil->parentItem()->size(), QSizeF(card->width(), pictureHeight));
    EXPECT_EQ(veil->width(), card->width());
    const auto* play = symbol(card, "play.fill");
    ASSERT_NE(play, nullptr);
    EXPECT_EQ(play->width(), 18);
    const auto* circle = play->parentItem();
    EXPECT_EQ(circle->size(), QSizeF(48, 48));
    EXPECT_EQ(radiusOf(circle), 24);
    EXPECT_EQ(colorOf(circle), theme.accent());
    EXPECT_NEAR(areaIn(card, circle).center().x(), card->width() / 2, 0.6);
    EXPECT_NEAR(areaIn(card, circle).center().y(), pictureHeight / 2, 0.6);
    const auto* shadow = circle->childItems().first();
    EXPECT_EQ(colorOf(shadow), withOpacity(theme.shadow(), 0.5));
    EXPECT_EQ(radiusOf(shadow), 8);
    EXPECT_EQ(shadow->property("offset"), 2);
}

TEST_F(ClipCardTest, HoverShowsTheDragHintAtTheTopRight)
{
    auto* card = open();
    hover(card);
    auto* words = textItem(QStringLiteral("Discord'a sürükle"));
    ASSERT_NE(words, nullptr);
    EXPECT_EQ(fontOf(words).pixelSize(), 10);
    EXPECT_EQ(fontOf(words).weight(), QFont::Bold);
    EXPECT_EQ(colorOf(words), QColor(Qt::white));
    const auto* hint = rectangleOf(card, QColor(QStringLiteral("#5865F2")));
    ASSERT_NE(hint, nullptr);
    const auto area = areaIn(card, hint);
    EXPECT_EQ(area.top(), 8);
    EXPECT_EQ(area.right(), card->width() - 8);
    EXPECT_EQ(radiusOf(hint), 4);
    EXPECT_EQ(areaIn(hint, words).right(), hint->width() - 7);
    EXPECT_EQ(hint->height(), words->height() + 2 * 4);
    EXPECT_NE(symbol(card, "hand.draw.fill"), nullptr);
    // The tier badge is at the other corner.
    const auto* badge = itemsOf("TierBadge").value(0);
    ASSERT_NE(badge, nullptr);
    EXPECT_EQ(areaIn(card, badge).topLeft(), QPointF(8, 8));
}

TEST_F(ClipCardTest, ShowsTheDurationOnAChip)
{
    auto* card = open();
    auto* words = textItem(QStringLiteral("1:05"));
    ASSERT_NE(words, nullptr);
    EXPECT_EQ(fontOf(words).pixelSize(), 11);
    EXPECT_EQ(fontOf(words).weight(), QFont::Bold);
    EXPECT_EQ(colorOf(words), QColor(Qt::white));
    const auto* chip = rectangleOf(card, withOpacity(Qt::black, 0.75));
    ASSERT_NE(chip, nullptr);
    EXPECT_EQ(radiusOf(chip), 4);
    EXPECT_EQ(chip->size(), QSizeF(words->width() + 12, words->height() + 6));
    EXPECT_EQ(areaIn(card, chip).bottomRight(), QPointF(card->width() - 8, std::round(card->width() * 9 / 16) - 8));
}

TEST_F(ClipCardTest, BrokenFileHasNeitherChipNorThumbnail)
{
    reading = {};
    auto* card = open();
    for (const auto* box : rectangles(card)) {
        EXPECT_NE(colorOf(box), withOpacity(Qt::black, 0.75));
    }
    const auto* sign = symbol(card, "film");
    ASSERT_NE(sign, nullptr);
    EXPECT_EQ(sign->width(), 26);
    EXPECT_EQ(colorOf(sign), theme.dim());
    EXPECT_NE(rectangleOf(card, theme.bg()), nullptr);
}

TEST_F(ClipCardTest, ThumbnailReplacesThePlaceholder)
{
    auto* card = open();
    EXPECT_EQ(symbol(card, "film"), nullptr);
    const auto image = window->grabWindow();
    EXPECT_EQ(image.pixelColor(card->mapToScene({card->width() / 2, 60}).toPoint()), QColor(Qt::darkGreen));
}

TEST_F(ClipCardTest, ShowsTitleAndDetailsOnOneLineEach)
{
    auto* card = open();
    auto* block = itemsOf("ClipCardText").value(0);
    ASSERT_NE(block, nullptr);
    auto texts = itemsOfType(block, "QQuickText");
    ASSERT_EQ(texts.size(), 6);
    const auto* title = texts.takeFirst();
    EXPECT_EQ(title->property("text"), QStringLiteral("Ace"));
    EXPECT_EQ(title->position(), QPointF(12, 12));
    EXPECT_EQ(fontOf(title).pixelSize(), 13);
    EXPECT_EQ(fontOf(title).weight(), QFont::DemiBold);
    EXPECT_EQ(colorOf(title), theme.text());
    EXPECT_EQ(title->property("maximumLineCount"), 1);
    const auto clip = library.clips().first();
    const QStringList words{QStringLiteral("Dota 2"), QStringLiteral("•"), clip.timeText(), QStringLiteral("•"),
                            clip.sizeText()};
    qreal x = 12;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const auto* text = texts.at(i);
        EXPECT_EQ(text->property("text"), words.at(i));
        EXPECT_EQ(fontOf(text).pixelSize(), 11);
        EXPECT_EQ(colorOf(text), i == 0 ? theme.accent() : theme.muted());
        EXPECT_EQ(areaIn(block, text).left(), x);
        x = areaIn(block, text).right() + 6;
    }
    EXPECT_EQ(areaIn(block, texts.last()).bottom(), block->height() - 12);
    const auto* button = itemsOf("ClipMenuButton").value(0);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(areaIn(card, button).right(), card->width() - 12);
}

TEST_F(ClipCardTest, NamesWithLineBreaksTakeOneLine)
{
    auto* card = open("Dota\n2 - Ace\nagain.mp4");
    makeFile("Dota 2 - Plain.mp4", 1);
    reload();
    settle(50);
    const auto blocks = itemsOf("ClipCardText");
    ASSERT_EQ(blocks.size(), 2);
    EXPECT_EQ(blocks.at(0)->implicitHeight(), blocks.at(1)->implicitHeight());
    EXPECT_EQ(card->height(), card->implicitHeight()) << "the grid reserves the height of the card's content";
}

TEST_F(ClipCardTest, DragCarriesTheThumbnail)
{
    auto* card = open();
    const auto start = middleOf(card);
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    for (int y = 10; y <= 60; y += 10) {
        QTest::mouseMove(window, start + QPoint(0, y));
    }
    settle(50);
    QTest::mouseRelease(window, Qt::LeftButton, {}, start + QPoint(0, 60));
    ASSERT_EQ(dragged.size(), 1);
    EXPECT_EQ(draggedPicture.deviceIndependentSize().width(), 200);
    EXPECT_EQ(draggedPicture.devicePixelRatio(), window->effectiveDevicePixelRatio());
    EXPECT_EQ(draggedPicture.pixelColor(draggedPicture.rect().center()), QColor(Qt::darkGreen));
}

} // namespace
} // namespace quelto
