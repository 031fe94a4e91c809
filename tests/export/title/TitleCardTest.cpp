// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/title/TitleCard.h"

#include "export/rules/TitleGeometry.h"
#include "export/title/TitleText.h"
#include "tests/export/title/Titles.h"

#include <QDir>
#include <QPainter>

#include <gtest/gtest.h>

namespace quelto {
namespace {

constexpr QSize FullHd(1920, 1080);
constexpr QSize Tall(1080, 1920);

/// The smallest rectangle, in pixels of the canvas, that holds all pixels of the card for which the condition is true.
template <typename Condition> QRect boundsOf(const TitleCard& card, Condition isCounted)
{
    QRect bounds;
    for (int y = 0; y < card.image.height(); ++y) {
        for (int x = 0; x < card.image.width(); ++x) {
            if (isCounted(card.image.pixelColor(x, y))) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    return bounds.translated(card.position.toPoint());
}

bool isText(QColor color)
{
    return color.red() > 20 && color.red() == color.green() && color.red() == color.blue();
}

bool isWhite(QColor color)
{
    return color == QColor(Qt::white);
}

bool isBar(QColor color)
{
    return color == QColor(255, 89, 31);
}

bool isPlate(QColor color)
{
    return color == QColor(0, 0, 0, 153);
}

TitleGeometry geometryOf(const QString& title, QSize canvas)
{
    return titleGeometry(canvas, TitleText(title, titleFontSize(canvas)).size());
}

/// All whole pixels inside the rectangle.
QRect wholePixels(const QRectF& rect)
{
    return QRect(QPoint(qCeil(rect.left()), qCeil(rect.top())),
                 QPoint(qFloor(rect.right()) - 1, qFloor(rect.bottom()) - 1));
}

void savePicture(const QString& name, const TitleCard& card, QSize canvas)
{
    QImage picture(canvas, QImage::Format_ARGB32_Premultiplied);
    QLinearGradient gradient(0, 0, canvas.width(), canvas.height());
    gradient.setColorAt(0, QColor(40, 110, 90));
    gradient.setColorAt(1, QColor(200, 220, 240));
    QPainter painter(&picture);
    painter.fillRect(picture.rect(), gradient);
    painter.drawImage(card.position, card.image);
    painter.end();
    const QDir pictures(QStringLiteral(QUELTO_PICTURES));
    pictures.mkpath(QStringLiteral("."));
    picture.save(pictures.filePath(QStringLiteral("title-%1.png").arg(name.toLower())));
}

struct CardCase {
    const char* name;
    QString title;
    QSize canvas;
};

class TitleCardPixels : public testing::TestWithParam<CardCase> { };

TEST_P(TitleCardPixels, ArePlateBarAndTextAtTheirPlaces)
{
    const auto& [name, title, canvas] = GetParam();
    const auto card = drawTitleCard(title, canvas);
    ASSERT_TRUE(card);
    savePicture(QString::fromLatin1(name), *card, canvas);
    const auto geometry = geometryOf(title, canvas);
    EXPECT_EQ(card->image.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(QRect(card->position.toPoint(), card->image.size()), geometry.plate.toAlignedRect());
    EXPECT_EQ(boundsOf(*card, isBar), wholePixels(geometry.bar));
    auto besideTheBar = geometry.plate;
    besideTheBar.setLeft(geometry.bar.right());
    EXPECT_EQ(boundsOf(*card, isPlate), wholePixels(besideTheBar));

    const auto text = boundsOf(*card, isText);
    EXPECT_TRUE(geometry.text.toAlignedRect().contains(text));
    EXPECT_TRUE(text.intersects(boundsOf(*card, isWhite)));
    // Letters leave a little room at their sides.
    const double bearing = geometry.text.height() / 4;
    EXPECT_NEAR(text.left(), geometry.text.left(), bearing);
    EXPECT_NEAR(text.right(), geometry.text.right(), bearing);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, TitleCardPixels,
    testing::Values(CardCase{"Short", QStringLiteral("Penta Kill"), FullHd},
                    CardCase{"Letter", QStringLiteral("I"), FullHd},
                    CardCase{"OnATallCanvas", QStringLiteral("Penta Kill: Baron Steal"), Tall},
                    CardCase{"Small", QStringLiteral("Penta Kill"), {640, 360}},
                    CardCase{"Shrunk", QStringLiteral("The whole team falls before the gates of the base"), FullHd},
                    CardCase{"ShrunkOnATallCanvas", QStringLiteral("The whole team falls before the gates of the base"),
                             Tall},
                    CardCase{"FarShrunk", QStringLiteral("Penta Kill ").repeated(16).trimmed(), FullHd}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(TitleCard, WideTextTakes85PercentOfTheCanvas)
{
    for (const auto& canvas : {FullHd, Tall}) {
        // A letter without room at its sides.
        const auto card = drawTitleCard(QString(60, QChar(0x2588)), canvas);
        ASSERT_TRUE(card);
        const auto text = boundsOf(*card, isText);
        EXPECT_NEAR(text.width(), canvas.width() * 0.85, 2);
        EXPECT_NEAR(text.left() + text.right() + 1, canvas.width(), 2);
    }
}

TEST(TitleCard, LowerEdgeIsAt78PercentFromTheBottom)
{
    for (const auto& canvas : {FullHd, Tall}) {
        const auto card = drawTitleCard(QStringLiteral("Ace"), canvas);
        ASSERT_TRUE(card);
        EXPECT_NEAR(card->position.y() + card->image.height(), canvas.height() * 0.22, 1);
    }
}

class TitleCardInALanguage : public testing::TestWithParam<LanguageTitle> { };

TEST_P(TitleCardInALanguage, DrawsItsLetters)
{
    const auto title = QString::fromUtf8(GetParam().title);
    const auto card = drawTitleCard(title, FullHd);
    ASSERT_TRUE(card);
    savePicture(QString::fromLatin1(GetParam().language), *card, FullHd);
    EXPECT_TRUE(geometryOf(title, FullHd).text.toAlignedRect().contains(boundsOf(*card, isText)));
    const auto boxes = drawTitleCard(QString(title.size(), QChar(0xE000)), FullHd);
    ASSERT_TRUE(boxes);
    EXPECT_NE(card->image, boxes->image);
}

INSTANTIATE_TEST_SUITE_P(Languages, TitleCardInALanguage, testing::ValuesIn(LanguageTitles),
                         [](const auto& each) { return std::string(each.param.language); });

TEST(TitleCard, BlankTitleHasNone)
{
    for (const auto& title : {QString(), QStringLiteral(" "), QStringLiteral(" \r\n\t "), QString(QChar::Nbsp),
                              QString(QChar::ParagraphSeparator), QString(5000, u' ')}) {
        EXPECT_FALSE(drawTitleCard(title, FullHd)) << title.size();
    }
}

TEST(TitleCard, LineBreakIsDrawnAsASpace)
{
    const auto broken = drawTitleCard(QStringLiteral("Penta\r\nKill"), FullHd);
    const auto spaced = drawTitleCard(QStringLiteral("Penta Kill"), FullHd);
    ASSERT_TRUE(broken && spaced);
    EXPECT_EQ(broken->image, spaced->image);
    EXPECT_EQ(broken->position, spaced->position);
}

TEST(TitleCard, LongTitleIsScaledAndNoLargerThanTheCanvas)
{
    for (const qsizetype length : {1000, 100'000}) {
        const auto card = drawTitleCard(QString(length, u'W'), FullHd);
        ASSERT_TRUE(card) << length;
        EXPECT_LE(card->image.width(), FullHd.width());
        EXPECT_LT(card->image.height(), 60);
        EXPECT_LE(boundsOf(*card, isText).width(), FullHd.width() * 0.85 + 1);
    }
}

TEST(TitleCard, UnusualTextIsDrawn)
{
    const auto surrogate = QString(QChar(0xD83D));
    for (const auto& title :
         {QStringLiteral("👍🏽 GG 👨‍👩‍👧"), QStringLiteral("五杀 ペンタキル 펜타킬"),
          QStringLiteral("خماسية"), QStringLiteral("a") + QString(300, QChar(0x0301)), surrogate,
          QStringLiteral("a\x01\x1b\t") + QChar(u'\0') + QStringLiteral("b")}) {
        const auto card = drawTitleCard(title, FullHd);
        ASSERT_TRUE(card) << title.toStdString();
        EXPECT_FALSE(boundsOf(*card, isText).isEmpty()) << title.toStdString();
    }
}

TEST(TitleCard, UnusualCanvasBoundsTheCard)
{
    const auto title = QStringLiteral("Penta Kill");
    EXPECT_FALSE(drawTitleCard(title, {}));
    EXPECT_FALSE(drawTitleCard(title, {0, 0}));
    EXPECT_FALSE(drawTitleCard(title, {-10, -10}));
    for (const QSize canvas : {QSize(2, 2), QSize(100, 2000), QSize(2000, 20)}) {
        const auto card = drawTitleCard(title, canvas);
        ASSERT_TRUE(card) << canvas.width();
        EXPECT_TRUE(QRect({0, 0}, canvas).contains(QRect(card->position.toPoint(), card->image.size())))
            << canvas.width();
    }
}

TEST(TitleCard, IsTheSameOnEveryThread)
{
    const auto title = QStringLiteral("Съёмка 五 Penta Kill");
    std::vector<std::optional<TitleCard>> cards(4);
    std::vector<std::thread> threads;
    threads.reserve(cards.size());
    for (auto& card : cards) {
        threads.emplace_back([&] { card = drawTitleCard(title, FullHd); });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    const auto expected = drawTitleCard(title, FullHd);
    for (const auto& card : cards) {
        ASSERT_TRUE(card);
        EXPECT_EQ(card->image, expected->image);
    }
}

} // namespace
} // namespace quelto
