// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

using test::colorOf;
using test::fontOf;
using test::outlineOf;
using test::placeOf;
using test::radiusOf;

class SidebarLookTest : public test::ShellFixture {
protected:
    const QString all = QStringLiteral("Tüm Klipler, 3");
    const QString matchRow = QStringLiteral("Maç Özetleri, 0");
    const QString game = QStringLiteral("Dota 2, 2");

    void SetUp() override
    {
        ShellFixture::SetUp();
        makeClips({"Dota 2 - a.mp4", "Dota 2 - b.mp4", "Counter - a.mp4"});
        // Items are laid out when a frame is drawn.
        window->grabWindow();
    }

    /// The rectangle of a label without its padding.
    QRectF contentRectOf(const QString& label) const
    {
        const auto* words = textItem(label);
        const auto padding = [words](const char* side) { return words->property(side).toDouble(); };
        return placeOf(words).adjusted(padding("leftPadding"), padding("topPadding"), -padding("rightPadding"),
                                       -padding("bottomPadding"));
    }
    static QQuickItem* backgroundOf(const QQuickItem* row) { return row->property("background").value<QQuickItem*>(); }
    /// The accent bar at the row's edge; null if it is not shown.
    static QQuickItem* barOf(const QQuickItem* row)
    {
        return test::firstVisibleOn(backgroundOf(row), [](const QQuickItem* each) { return each->width() == 3; });
    }
};

TEST_F(SidebarLookTest, BrandHasDesignedMargins)
{
    const auto* name = textItem(QStringLiteral("QUELTO"));
    auto* brand = name->parentItem()->parentItem();
    EXPECT_EQ(placeOf(brand).topLeft(), QPointF(18, 40));
    EXPECT_EQ(contentRectOf(QStringLiteral("KÜTÜPHANE")).top(), placeOf(brand).bottom() + 26);
    EXPECT_EQ(colorOf(name), theme->text());

    const auto* subtitle = textItem(QStringLiteral("REPLAY"));
    EXPECT_EQ(fontOf(subtitle).pixelSize(), 9);
    EXPECT_EQ(fontOf(subtitle).weight(), QFont::Bold);
    EXPECT_EQ(fontOf(subtitle).letterSpacing(), 2.5);
    EXPECT_EQ(colorOf(subtitle), theme->accent());
}

TEST_F(SidebarLookTest, BrandTileShowsASymbolOnTheAccentColor)
{
    auto* brand = textItem(QStringLiteral("QUELTO"))->parentItem()->parentItem();
    const auto* symbol = test::symbolOn(brand);
    ASSERT_NE(symbol, nullptr);
    const auto* tile = test::enclosingRectangle(symbol);
    EXPECT_EQ(placeOf(tile), QRectF(18, 40, 30, 30));
    EXPECT_EQ(radiusOf(tile), 7);
    EXPECT_EQ(colorOf(tile), theme->accent());
    EXPECT_EQ(symbol->property("symbol").toString(), QStringLiteral("play.fill"));
    EXPECT_EQ(colorOf(symbol), QColor(Qt::white));
    EXPECT_EQ(placeOf(symbol).center(), placeOf(tile).center());
}

TEST_F(SidebarLookTest, LabelsHaveDesignedFontAndColor)
{
    for (const auto* label : {"KÜTÜPHANE", "OYUNLAR / UYGULAMALAR"}) {
        const auto* words = textItem(QString::fromUtf8(label));
        ASSERT_NE(words, nullptr) << label;
        EXPECT_EQ(fontOf(words).pixelSize(), 10) << label;
        EXPECT_EQ(fontOf(words).weight(), QFont::Bold) << label;
        EXPECT_NEAR(fontOf(words).letterSpacing(), 1.4, 0.02) << label;
        EXPECT_EQ(colorOf(words), theme->dim()) << label;
    }
}

TEST_F(SidebarLookTest, LabelsHaveDesignedDistancesToTheRows)
{
    const auto first = contentRectOf(QStringLiteral("KÜTÜPHANE"));
    const auto second = contentRectOf(QStringLiteral("OYUNLAR / UYGULAMALAR"));
    const auto row = placeOf(item(all));
    EXPECT_EQ(first.left(), row.left() + 10);
    EXPECT_EQ(first.right(), row.right() - 10);
    EXPECT_EQ(row.top(), first.bottom() + 6);
    EXPECT_EQ(second.left(), row.left() + 10);
    EXPECT_EQ(second.top(), placeOf(item(matchRow)).bottom() + 16);
    EXPECT_EQ(placeOf(item(game)).top(), second.bottom() + 6);
}

TEST_F(SidebarLookTest, SymbolsAreAlignedAndUseTheAccentColorWhenActive)
{
    const std::array<std::pair<QString, const char*>, 4> rows{{{all, "square.grid.2x2.fill"},
                                                               {matchRow, "flag.checkered"},
                                                               {game, "gamecontroller.fill"},
                                                               {QStringLiteral("Ayarlar"), "gearshape.fill"}}};
    for (const auto& [name, expected] : rows) {
        auto* row = item(name);
        const auto* symbol = test::symbolOn(row);
        ASSERT_NE(symbol, nullptr) << expected;
        EXPECT_EQ(symbol->property("symbol").toString(), QLatin1String(expected));
        EXPECT_EQ(placeOf(symbol).center().x(), placeOf(row).left() + 10 + 18 / 2.0) << expected;
        EXPECT_EQ(placeOf(symbol).center().y(), placeOf(row).center().y()) << expected;
        EXPECT_EQ(colorOf(symbol), name == all ? theme->accent() : theme->muted()) << expected;
    }
    navigation->showMatches();
    EXPECT_EQ(colorOf(test::symbolOn(item(all))), theme->muted());
    EXPECT_EQ(colorOf(test::symbolOn(item(matchRow))), theme->accent());
}

TEST_F(SidebarLookTest, CountsAreSmallDimAndRightAligned)
{
    for (const auto& [name, number] : {std::pair(all, "3"), std::pair(matchRow, "0"), std::pair(game, "2")}) {
        auto* row = item(name);
        const auto* count = test::labelOn(row, QLatin1String(number));
        ASSERT_NE(count, nullptr) << number;
        EXPECT_EQ(fontOf(count).pixelSize(), 11);
        EXPECT_EQ(fontOf(count).weight(), QFont::DemiBold);
        EXPECT_EQ(colorOf(count), theme->dim());
        EXPECT_EQ(placeOf(count).right(), placeOf(row).right() - 10);
    }
}

TEST_F(SidebarLookTest, RowsHaveDesignedPadding)
{
    auto* row = item(all);
    const auto* title = test::labelOn(row, QStringLiteral("Tüm Klipler"));
    EXPECT_EQ(fontOf(title).pixelSize(), 13);
    EXPECT_EQ(placeOf(title).center().y(), placeOf(row).center().y());
    EXPECT_EQ(row->height(), std::max(title->height(), 18.0) + 2 * 8);
}

TEST_F(SidebarLookTest, ActiveRowHasABackgroundAndAnAccentBar)
{
    const auto* active = item(all);
    EXPECT_EQ(placeOf(backgroundOf(active)), placeOf(active));
    EXPECT_EQ(colorOf(backgroundOf(active)), theme->card());
    EXPECT_EQ(radiusOf(backgroundOf(active)), 6);
    const auto* bar = barOf(active);
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(placeOf(bar), QRectF(placeOf(active).left(), placeOf(active).center().y() - 9, 3, 18));
    EXPECT_EQ(radiusOf(bar), 2);
    EXPECT_EQ(colorOf(bar), theme->accent());

    const auto* idle = item(matchRow);
    EXPECT_EQ(colorOf(backgroundOf(idle)).alpha(), 0);
    EXPECT_EQ(barOf(idle), nullptr);
    navigation->showMatches();
    EXPECT_EQ(colorOf(backgroundOf(active)).alpha(), 0);
    EXPECT_EQ(barOf(active), nullptr);
    EXPECT_NE(barOf(idle), nullptr);
}

TEST_F(SidebarLookTest, RowUnderThePointerIsBrighter)
{
    const auto point = [this](const QPoint& place) {
        QTest::mouseMove(window, place);
        drawFrame();
    };
    for (const auto& name : {game, matchRow, QStringLiteral("Ayarlar")}) {
        auto* row = item(name);
        const auto* title = test::labelOn(row, row->property("text").toString());
        point(test::middleOf(row));
        EXPECT_EQ(colorOf(backgroundOf(row)), test::withOpacity(theme->card(), 0.6)) << name.toStdString();
        EXPECT_EQ(colorOf(title), theme->text()) << name.toStdString();
        point({600, 400});
        EXPECT_EQ(colorOf(backgroundOf(row)).alpha(), 0) << name.toStdString();
        EXPECT_EQ(colorOf(title), theme->muted()) << name.toStdString();
    }
    point(test::middleOf(item(matchRow)));
    picture(QStringLiteral("sidebar-hovered"));
    point(test::middleOf(item(all)));
    EXPECT_EQ(colorOf(backgroundOf(item(all))), theme->card()) << "the open page keeps its mark";
}

TEST_F(SidebarLookTest, ToolTipShowsANameThatIsCut)
{
    const auto cut = QStringLiteral("The Elder Scrolls V Skyrim Anniversary Edition");
    makeClips({"The Elder Scrolls V Skyrim Anniversary Edition - a.mp4"});
    const auto hasToolTip = [&](const QString& words) {
        auto* const overlay =
            test::firstVisible(window, [](const QQuickItem* each) { return each->inherits("QQuickOverlay"); });
        return overlay != nullptr && test::labelOn(overlay, words) != nullptr;
    };
    QTest::mouseMove(window, test::middleOf(item(cut + QStringLiteral(", 1"))));
    EXPECT_TRUE(QTest::qWaitFor([&] { return hasToolTip(cut); }));
    picture(QStringLiteral("sidebar-tooltip"));
    QTest::mouseMove(window, test::middleOf(item(game)));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !hasToolTip(cut); }));
    // The tool tip of a name that is not cut would open now.
    QTest::qWait(theme->duration().toolTipDelay + 200);
    EXPECT_FALSE(hasToolTip(QStringLiteral("Dota 2")));
}

TEST_F(SidebarLookTest, UpdateRowIsACardWithAGreenOutline)
{
    updates->receive(R"({"version": "2.0", "notes": [], "url": "https://example.org/"})");
    updates->setShowSheet(false);
    window->grabWindow();
    const auto text = QStringLiteral("Güncelleme var: 2.0");
    auto* row = item(text);
    ASSERT_NE(row, nullptr);
    const auto* words = test::labelOn(row, text);
    EXPECT_EQ(fontOf(words).pixelSize(), 12);
    EXPECT_EQ(fontOf(words).weight(), QFont::Bold);
    EXPECT_EQ(colorOf(words), theme->text());
    const auto* symbol = test::symbolOn(row);
    EXPECT_EQ(symbol->property("symbol").toString(), QStringLiteral("arrow.down.circle.fill"));
    EXPECT_EQ(colorOf(symbol), theme->good());
    const auto* content = words->parentItem();
    EXPECT_EQ(placeOf(content), placeOf(row).adjusted(12, 9, -12, -9));
    EXPECT_EQ(placeOf(symbol).left(), placeOf(row).left() + 12);
    EXPECT_LE(placeOf(words).right(), placeOf(row).right() - 12);
    const auto* background = backgroundOf(row);
    EXPECT_EQ(placeOf(background), placeOf(row));
    EXPECT_EQ(colorOf(background), theme->card());
    EXPECT_EQ(radiusOf(background), 8);
    EXPECT_EQ(outlineOf(background).width, 1);
    EXPECT_EQ(outlineOf(background).color, test::withOpacity(theme->good(), 0.4));
}

} // namespace
} // namespace quelto
