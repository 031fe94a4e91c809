// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"

#include "tests/ui/QmlFixture.h"

#include <QAccessible>

namespace quelto {
namespace {

using test::colorOf;
using test::fontOf;
using test::outlineOf;

class SectionCard : public test::QmlFixture { };
class SettingRow : public test::QmlFixture { };
class TierBadge : public test::QmlFixture {
protected:
    QColor colorOfTier(const QString& name) const { return color(name, "color"); }
};

TEST_F(SectionCard, FramesAHeadingAndItsContent)
{
    show(QStringLiteral("SectionCard { objectName: 'card'; width: 400; title: 'Kayıt şimdi'; symbol: 'film'\n"
                        "Rectangle { objectName: 'first'; width: parent.width; height: 30 }\n"
                        "Rectangle { objectName: 'second'; width: parent.width; height: 50 } }"));
    const auto* heading = text(QStringLiteral("KAYIT ŞİMDİ"));
    ASSERT_NE(heading, nullptr);
    EXPECT_EQ(fontOf(heading).pixelSize(), 11);
    EXPECT_EQ(fontOf(heading).weight(), QFont::Bold);
    EXPECT_NEAR(fontOf(heading).letterSpacing(), 1.2, 0.02);
    EXPECT_EQ(colorOf(heading), theme->muted());
    const auto* header = heading->parentItem();
    const auto* symbol = header->childItems().first();
    EXPECT_EQ(colorOf(symbol), theme->accent());
    EXPECT_EQ(header->position(), QPointF(20, 20));
    EXPECT_EQ(heading->x(), symbol->width() + 8);

    auto* card = item(QStringLiteral("card"));
    const auto first = item(QStringLiteral("first"))->mapRectToItem(card, {0, 0, 360, 30});
    EXPECT_EQ(first, QRectF(20, 20 + header->height() + 14, 360, 30));
    const auto* second = item(QStringLiteral("second"));
    EXPECT_EQ(second->width(), 360);
    EXPECT_EQ(second->y(), 30 + 18);
    EXPECT_EQ(card->implicitHeight(), first.bottom() + 18 + 50 + 20);
    EXPECT_EQ(colorOf(card), theme->panel());
    EXPECT_EQ(card->property("radius").toInt(), 10);
    EXPECT_EQ(outlineOf(card).width, 1);
    EXPECT_EQ(outlineOf(card).color, theme->border());
}

TEST_F(SectionCard, UppercasesByTheRulesOfTheLanguage)
{
    L10n::use(QStringLiteral("en"));
    show(QStringLiteral("SectionCard { width: 400; title: 'Clip' }"));
    EXPECT_NE(text(QStringLiteral("CLIP")), nullptr);
    window->close();
    L10n::use(QStringLiteral("tr"));
    show(QStringLiteral("SectionCard { width: 400; title: 'Klip' }"));
    EXPECT_NE(text(QStringLiteral("KLİP")), nullptr);
}

TEST_F(SettingRow, PlacesTheControlAtTheRightEdgeCentred)
{
    show(QStringLiteral("SettingRow { objectName: 'row'; width: 400; title: 'Klip'; subtitle: 'Süre'\n"
                        "Rectangle { objectName: 'control'; width: 60; height: 80 } }"));
    const auto control = item(QStringLiteral("control"))->mapRectToItem(item(QStringLiteral("row")), {0, 0, 60, 80});
    EXPECT_EQ(control, QRectF(340, 0, 60, 80));
    const auto* title = text(QStringLiteral("Klip"));
    const auto* subtitle = text(QStringLiteral("Süre"));
    EXPECT_EQ(fontOf(title).pixelSize(), 13);
    EXPECT_EQ(fontOf(title).weight(), QFont::DemiBold);
    EXPECT_EQ(colorOf(title), theme->text());
    EXPECT_EQ(fontOf(subtitle).pixelSize(), 11);
    EXPECT_EQ(fontOf(subtitle).weight(), QFont::Normal);
    EXPECT_EQ(colorOf(subtitle), theme->muted());
    EXPECT_EQ(subtitle->y(), title->height() + 3);
    EXPECT_EQ(title->parentItem()->width(), 400 - 60 - 16 - 12 - 16);
    EXPECT_NEAR(title->parentItem()->y() + title->parentItem()->height() / 2, 40, 0.5);
}

TEST_F(SettingRow, WrapsItsSubtitleAndGrows)
{
    show(QStringLiteral("SettingRow { objectName: 'row'; width: 240; title: 'Klip'\n"
                        "subtitle: 'Açıksa sesiniz de klibe eklenir, ve sistem sesiyle tek kanalda karıştırılır'\n"
                        "SSToggle { } }"));
    const auto* subtitle =
        text(QStringLiteral("Açıksa sesiniz de klibe eklenir, ve sistem sesiyle tek kanalda karıştırılır"));
    EXPECT_GT(subtitle->property("lineCount").toInt(), 1);
    EXPECT_FALSE(subtitle->property("truncated").toBool());
    EXPECT_GE(item(QStringLiteral("row"))->implicitHeight(), subtitle->y() + subtitle->height());
}

TEST_F(SettingRow, WorksWithoutASubtitle)
{
    show(QStringLiteral("SettingRow { objectName: 'row'; width: 240; title: 'Klip' }"));
    EXPECT_EQ(item(QStringLiteral("row"))->implicitHeight(), text(QStringLiteral("Klip"))->height());
}

TEST_F(TierBadge, ShowsTierAndScore)
{
    show(QStringLiteral("TierBadge { objectName: 'badge'; tier: 'BASIT'; label: 'Basit'; score: 15 }"));
    const auto* words = text(QStringLiteral("BASİT 15"));
    ASSERT_NE(words, nullptr);
    EXPECT_EQ(fontOf(words).pixelSize(), 10);
    EXPECT_EQ(fontOf(words).weight(), QFont::ExtraBold);
    EXPECT_NEAR(fontOf(words).letterSpacing(), 0.6, 0.02);
    auto* row = words->parentItem();
    const auto* badge = item(QStringLiteral("badge"));
    EXPECT_EQ(badge->property("radius").toInt(), 4);
    EXPECT_EQ(badge->width(), row->width() + 14);
    EXPECT_EQ(badge->height(), row->height() + 8);
    EXPECT_EQ(words->x(), row->childItems().first()->width() + 4);
}

TEST_F(TierBadge, HasNoTrailingSpaceWithoutAScore)
{
    show(QStringLiteral(
        "TierBadge { tier: 'BASIT'; label: 'Basit' }\n TierBadge { y: 60; tier: 'ORTA'; label: 'Orta'; score: null }\n"
        "TierBadge { y: 120; tier: 'ORTA'; label: 'Orta'; score: 0 }"));
    EXPECT_NE(text(QStringLiteral("BASİT")), nullptr);
    EXPECT_NE(text(QStringLiteral("ORTA")), nullptr);
    EXPECT_NE(text(QStringLiteral("ORTA 0")), nullptr);
}

TEST_F(TierBadge, TakesItsColoursFromTheTier)
{
    show(QStringLiteral("TierBadge { objectName: 'epic'; tier: 'EFSANE'; label: 'Efsane' }\n"
                        "TierBadge { y: 60; objectName: 'medium'; tier: 'ORTA'; label: 'Orta' }\n"
                        "TierBadge { y: 120; objectName: 'basic'; tier: 'BASIT'; label: 'Basit' }"));
    EXPECT_EQ(colorOfTier(QStringLiteral("epic")), QColor(0xFF, 0xC5, 0x3D));
    EXPECT_EQ(colorOf(text(QStringLiteral("EFSANE"))), QColor(Qt::black));
    EXPECT_EQ(colorOfTier(QStringLiteral("basic")), QColor(0x8B, 0x7C, 0xFF));
    EXPECT_EQ(colorOf(text(QStringLiteral("BASİT"))), QColor(Qt::white));
    for (const auto& palette : Palette::all()) {
        settings.setColorTheme(palette.id);
        EXPECT_EQ(colorOfTier(QStringLiteral("medium")), palette.accent) << palette.id.toStdString();
        EXPECT_EQ(colorOf(text(QStringLiteral("ORTA"))), QColor(Qt::white));
        EXPECT_EQ(colorOfTier(QStringLiteral("epic")), QColor(0xFF, 0xC5, 0x3D));
        EXPECT_EQ(colorOfTier(QStringLiteral("basic")), QColor(0x8B, 0x7C, 0xFF));
    }
    const auto symbolOf = [&](const QString& words) {
        return text(words)->parentItem()->childItems().first()->property("symbol").toString();
    };
    EXPECT_EQ(symbolOf(QStringLiteral("EFSANE")), QStringLiteral("flame.fill"));
    EXPECT_EQ(symbolOf(QStringLiteral("ORTA")), QStringLiteral("bolt.fill"));
    EXPECT_EQ(symbolOf(QStringLiteral("BASİT")), QStringLiteral("star.fill"));
}

TEST_F(TierBadge, GlowsForTheBestTierOnly)
{
    show(QStringLiteral("TierBadge { x: 40; y: 40; width: 100; height: 20; tier: 'EFSANE'; label: 'Efsane' }\n"
                        "TierBadge { x: 40; y: 140; width: 100; height: 20; tier: 'ORTA'; label: 'Orta' }"));
    const auto image = window->grabWindow();
    EXPECT_NE(image.pixelColor(90, 38), theme->bg());
    EXPECT_EQ(image.pixelColor(90, 32), theme->bg());
    EXPECT_EQ(image.pixelColor(90, 138), theme->bg());
}

TEST_F(TierBadge, IsOneTextToScreenReaders)
{
    show(QStringLiteral("TierBadge { objectName: 'badge'; tier: 'EFSANE'; label: 'Efsane'; score: 170 }"));
    auto* interface = QAccessible::queryAccessibleInterface(item(QStringLiteral("badge")));
    EXPECT_EQ(interface->role(), QAccessible::StaticText);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Efsane 170"));
}

} // namespace
} // namespace quelto
