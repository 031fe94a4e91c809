// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/title/TitleText.h"

#include "tests/export/title/Titles.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>

#include <gtest/gtest.h>

namespace quelto {
namespace {

/// The index of the box that fonts draw for a letter that they do not have.
constexpr quint32 MissingGlyph = 0;

QList<quint32> glyphsOf(const QString& title)
{
    QList<quint32> glyphs;
    for (const auto& run : TitleText(title, 100).glyphs()) {
        glyphs += run.glyphIndexes();
    }
    return glyphs;
}

class TitleInALanguage : public testing::TestWithParam<LanguageTitle> { };

TEST_P(TitleInALanguage, HasAGlyphForEachLetter)
{
    const auto glyphs = glyphsOf(QString::fromUtf8(GetParam().title));
    EXPECT_GE(glyphs.size(), 15);
    EXPECT_FALSE(glyphs.contains(MissingGlyph));
}

INSTANTIATE_TEST_SUITE_P(Languages, TitleInALanguage, testing::ValuesIn(LanguageTitles),
                         [](const auto& each) { return std::string(each.param.language); });

TEST(TitleText, MissingGlyphIsFound)
{
    EXPECT_TRUE(glyphsOf(QString(QChar(0xE000))).contains(MissingGlyph)) << "a letter that no font has";
}

TEST(TitleText, IsBoldSansSerif)
{
    const auto runs = TitleText(QStringLiteral("Title"), 100).glyphs();
    ASSERT_EQ(runs.size(), 1);
    EXPECT_GE(runs.first().rawFont().weight(), QFont::Bold);
    EXPECT_EQ(runs.first().rawFont().familyName(),
              QRawFont::fromFont(QFont(QStringLiteral("sans-serif"))).familyName());
}

TEST(TitleText, SizeFollowsTheFontSize)
{
    const auto title = QStringLiteral("Penta Kill");
    const auto size = TitleText(title, 100).size();
    EXPECT_GT(size.width(), 300);
    EXPECT_GT(size.height(), 100);
    EXPECT_LT(size.height(), 200);
    EXPECT_NEAR(TitleText(title, 118.8).size().width(), size.width() * 1.188, 1e-6);
    EXPECT_NEAR(TitleText(title, 118.8).size().height(), size.height() * 1.188, 1e-6);
}

TEST(TitleText, LineBreakIsASpace)
{
    const auto expected = glyphsOf(QStringLiteral("one two"));
    for (const auto& lineBreak : {QStringLiteral("\n"), QStringLiteral("\r\n"), QStringLiteral("\r"),
                                  QString(QChar::LineSeparator), QString(QChar::ParagraphSeparator)}) {
        EXPECT_EQ(glyphsOf(QStringLiteral("one") + lineBreak + QStringLiteral("two")), expected)
            << lineBreak.toStdString();
    }
    EXPECT_EQ(glyphsOf(QStringLiteral("a\n\nb")), glyphsOf(QStringLiteral("a  b")));
}

TEST(TitleText, RightToLeftTextIsDrawnInItsRectangle)
{
    const TitleText text(QStringLiteral("שלום עולם"), 40);
    QImage image(text.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    text.draw(painter, {QPointF(0, 0), text.size()});
    painter.end();
    int white = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            white += image.pixelColor(x, y) == QColor(Qt::white) ? 1 : 0;
        }
    }
    EXPECT_GT(white, image.width() * image.height() / 20);
}

TEST(TitleText, LengthIsBounded)
{
    const QString unit(QStringLiteral("m"));
    EXPECT_GT(TitleText(unit.repeated(1000), 10).size().width(), TitleText(unit.repeated(999), 10).size().width());
    EXPECT_LE(TitleText(unit.repeated(1'000'000), 10).glyphs().first().glyphIndexes().size(), 4096);
}

} // namespace
} // namespace quelto
