// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/Hud.h"

#include "base/failures/WriteFailure.h"
#include "base/language/L10n.h"
#include "base/language/T.h"
#include "platform/OverlayPicture.h"

#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QScreen>
#include <QTest>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class HudTest : public test::ShellFixture {
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        hud = std::make_unique<Hud>(*engine, main);
    }
    void TearDown() override
    {
        hud.reset();
        ShellFixture::TearDown();
    }

    QVariant shown(const char* property) const { return hud->window()->rootObject()->property(property); }

    QQuickItem* root() const { return hud->window()->rootObject(); }
    QQuickItem* symbol() const { return test::symbolOn(root()); }
    QQuickItem* tile() const { return test::enclosingRectangle(symbol()); }
    void showTitleAndSubtitle()
    {
        hud->show({.title = QStringLiteral("Klip kaydedildi"), .subtitle = QStringLiteral("Dota 2")});
    }

    /// Renders the HUD and saves it as a picture.
    void savePicture(const QString& name)
    {
        QTest::qWait(300);
        const_cast<QQuickView*>(hud->window())->grabWindow().save(QDir(QStringLiteral(QUELTO_PICTURES)).filePath(name));
    }

    std::unique_ptr<Hud> hud;
};

TEST_F(HudTest, ShowsInTheCornerWithoutFocusOrPointerInput)
{
    hud->show({.title = QStringLiteral("Klip kaydedildi"), .subtitle = QStringLiteral("Dota 2 - 2026-03-01 20.15.07")});
    const auto screen = hud->window()->screen()->geometry();
    EXPECT_EQ(hud->window()->geometry(), QRect(screen.right() + 1 - 330 - 24, screen.top() + 48, 330, 66));
    for (const auto flag : {Qt::BypassWindowManagerHint, Qt::WindowTransparentForInput, Qt::WindowDoesNotAcceptFocus}) {
        EXPECT_TRUE(hud->window()->flags().testFlag(flag));
    }
    EXPECT_TRUE(hud->window()->isVisible());
}

TEST_F(HudTest, FadesOutAfterItsDisplayTime)
{
    hud->show({.title = QStringLiteral("A"), .subtitle = QString()});
    time.advance(2599ms);
    EXPECT_FALSE(shown("leaving").toBool());
    time.advance(1ms);
    EXPECT_TRUE(shown("leaving").toBool());
    time.advance(299ms);
    EXPECT_NE(hud->window(), nullptr);
    time.advance(1ms);
    EXPECT_EQ(hud->window(), nullptr);
}

TEST_F(HudTest, FadesInFasterThanOut)
{
    hud->show({.title = QStringLiteral("A"), .subtitle = QString()});
    const auto opacity = [this] { return shown("opacity").toDouble(); };
    EXPECT_LT(opacity(), 1);
    QTRY_COMPARE(opacity(), 1.0);
    time.advance(2600ms);
    QElapsedTimer sinceFadeOut;
    sinceFadeOut.start();
    QTRY_COMPARE(opacity(), 0.0);
    EXPECT_GE(sinceFadeOut.elapsed(), 270);
}

TEST_F(HudTest, NewMessageReplacesTheOldOneForTheFullTime)
{
    hud->show({.title = QStringLiteral("A"), .subtitle = QString()});
    time.advance(1s);
    hud->show({.title = QStringLiteral("B"), .subtitle = QString()});
    EXPECT_EQ(shown("title").toString(), QStringLiteral("B"));
    time.advance(2599ms);
    EXPECT_FALSE(shown("leaving").toBool());
    time.advance(301ms);
    EXPECT_EQ(hud->window(), nullptr);
}

TEST_F(HudTest, ShowsTextAndSymbolOfTheMessage)
{
    struct Case {
        HudMessage message;
        const char* symbol;
        const char* picture;
    };
    const auto russian = QString::fromUtf8("На диске закончилось место. Освободи место или выбери другую папку.");
    const std::array cases{
        Case{{.title = QStringLiteral("Klip kaydedildi"), .subtitle = QStringLiteral("Dota 2 - 2026-03-01 20.15.07")},
             "checkmark",
             "hud-clip.png"},
        Case{
            {.title = QStringLiteral("Klip kaydedilemedi"), .subtitle = russian, .error = true, .tier = ClipTier::epic},
            "xmark",
            "hud-error.png"},
        Case{{.title = QStringLiteral("Oto klip • Efsane"),
              .subtitle = QStringLiteral("PENTAKILL (Ahri)"),
              .tier = ClipTier::epic},
             "flame.fill",
             "hud-epic.png"},
        Case{
            {.title = QStringLiteral("Oto klip • Orta"), .subtitle = QStringLiteral("Zafer"), .tier = ClipTier::medium},
            "bolt.fill",
            "hud-medium.png"},
        Case{{.title = QStringLiteral("Oto klip • Basit"), .subtitle = QStringLiteral("Kill"), .tier = ClipTier::basic},
             "star.fill",
             "hud-basic.png"}};
    for (const auto& each : cases) {
        hud->show(each.message);
        EXPECT_EQ(shown("symbol").toString(), QLatin1String(each.symbol));
        EXPECT_EQ(shown("subtitle").toString(), each.message.subtitle);
        savePicture(QLatin1String(each.picture));
    }
}

TEST_F(HudTest, FadesInFor150AndOutFor300Milliseconds)
{
    showTitleAndSubtitle();
    QMap<double, int> durations;
    for (const auto* each : test::animationsOf(root())) {
        EXPECT_EQ(each->property("property").toString(), QStringLiteral("opacity"));
        durations.insert(each->property("to").toDouble(), each->property("duration").toInt());
    }
    EXPECT_EQ(durations, (QMap<double, int>{{0.0, 300}, {1.0, 150}}));
}

TEST_F(HudTest, BackgroundIsTheSameInEveryPalette)
{
    for (const auto* palette : {"ember", "ocean", "blurple"}) {
        settings.setColorTheme(QLatin1String(palette));
        showTitleAndSubtitle();
        const auto background = test::colorOf(root());
        EXPECT_EQ(QColor(background.rgb()), QColor(0x16, 0x16, 0x1C)) << palette;
        EXPECT_NEAR(background.alphaF(), 0.96, 0.002) << palette;
        EXPECT_EQ(test::radiusOf(root()), 10);
        EXPECT_EQ(test::outlineOf(root()).width, 1);
        EXPECT_EQ(test::outlineOf(root()).color, theme->border()) << palette;
    }
}

TEST_F(HudTest, LaysOutTileAndTwoLinesOfText)
{
    showTitleAndSubtitle();
    EXPECT_TRUE(QTest::qWaitFor([this] { return root()->opacity() == 1; }));
    EXPECT_EQ(root()->width(), 330);
    EXPECT_EQ(root()->height(), 66);
    EXPECT_EQ(test::placeOf(tile()), QRectF(14, 15, 36, 36));
    EXPECT_EQ(test::radiusOf(tile()), 7);
    EXPECT_EQ(test::placeOf(symbol()).center(), test::placeOf(tile()).center());
    const auto* title = test::labelOn(root(), QStringLiteral("Klip kaydedildi"));
    const auto* subtitle = test::labelOn(root(), QStringLiteral("Dota 2"));
    ASSERT_TRUE(title != nullptr && subtitle != nullptr);
    EXPECT_EQ(test::fontOf(title).pixelSize(), 13);
    EXPECT_EQ(test::fontOf(title).weight(), QFont::Bold);
    EXPECT_EQ(test::colorOf(title), QColor(Qt::white));
    EXPECT_EQ(test::fontOf(subtitle).pixelSize(), 11);
    EXPECT_EQ(test::colorOf(subtitle), theme->muted());
    for (const auto* line : {title, subtitle}) {
        EXPECT_EQ(test::placeOf(line).left(), 14 + 36 + 12);
        EXPECT_EQ(test::placeOf(line).right(), 330 - 14);
    }
    EXPECT_EQ(test::placeOf(subtitle).top(), test::placeOf(title).bottom() + 2);
    EXPECT_NEAR((test::placeOf(title).top() + test::placeOf(subtitle).bottom()) / 2, 33, 0.5);
}

TEST_F(HudTest, ShowsWhatToDoAfterAFailureInFullInEveryLanguage)
{
    for (const auto language : AllLanguages) {
        L10n::use(rawValueOf(language));
        for (const int code : {ENOSPC, EDQUOT, EROFS, EACCES, ENOENT, ENOTDIR, ENAMETOOLONG, EFBIG, EIO}) {
            const auto reason = writeFailureText(code);
            hud->show({.title = T("Klip kaydedilemedi"), .subtitle = reason, .error = true});
            EXPECT_TRUE(QTest::qWaitFor([this] { return root()->width() == 330; }));
            const auto* subtitle = test::labelOn(root(), reason);
            ASSERT_NE(subtitle, nullptr);
            EXPECT_FALSE(subtitle->property("truncated").toBool()) << reason.toStdString();
            EXPECT_LE(subtitle->property("lineCount").toInt(), 2) << reason.toStdString();
            EXPECT_NEAR(test::placeOf(tile()).center().y(), 33, 0.5) << reason.toStdString();
        }
    }
}

TEST_F(HudTest, SideIsRedOnlyForAFailure)
{
    const auto colorAtTheSide = [this](bool error) {
        hud->show({.title = QStringLiteral("A"), .subtitle = QString(), .error = error});
        EXPECT_TRUE(QTest::qWaitFor([this] { return root()->opacity() == 1; }));
        return const_cast<QQuickView*>(hud->window())->grabWindow().pixelColor(2, 33);
    };
    EXPECT_EQ(colorAtTheSide(true), theme->live());
    EXPECT_LT(colorAtTheSide(false).red(), 0x30);
}

TEST_F(HudTest, SymbolIsBlackInWeight)
{
    showTitleAndSubtitle();
    EXPECT_EQ(symbol()->property("weight").toInt(), QFont::Black);
    EXPECT_EQ(symbol()->property("status").toInt(), 1) << "the drawing is loaded";
}

TEST_F(HudTest, TileColorShowsTheTierOrTheFailure)
{
    struct Case {
        std::optional<ClipTier> tier;
        bool error;
        QColor tile;
        QColor symbol;
    };
    const QColor red(0xFF, 0x3B, 0x3B);
    const std::array cases{Case{std::nullopt, false, theme->accent(), Qt::white},
                           Case{ClipTier::epic, false, theme->gold(), Qt::black},
                           Case{ClipTier::medium, false, theme->accent(), Qt::white},
                           Case{ClipTier::basic, false, theme->violet(), Qt::white},
                           Case{std::nullopt, true, red, Qt::white}, Case{ClipTier::medium, true, red, Qt::white},
                           // A failure changes the tile and its symbol, not the color of the symbol.
                           Case{ClipTier::epic, true, red, Qt::black}};
    for (const auto& each : cases) {
        hud->show({.title = QStringLiteral("A"), .subtitle = QString(), .error = each.error, .tier = each.tier});
        SCOPED_TRACE(symbol()->property("symbol").toString().toStdString());
        EXPECT_EQ(test::colorOf(tile()), each.tile);
        EXPECT_EQ(test::colorOf(symbol()), each.symbol);
    }
}

class FakeOverlay final : public Overlay {
public:
    bool isAvailable() const override { return true; }
    void show(const OverlayPicture& picture) override { pictures.append(picture); }

    QList<OverlayPicture> pictures;
};

TEST_F(HudTest, ShowsACompletePictureWhereItCannotShowAWindow)
{
    FakeOverlay overlay;
    hud->showOn(overlay, {.title = QStringLiteral("Klip kaydedildi"), .subtitle = QStringLiteral("Dota 2")});
    EXPECT_EQ(hud->window(), nullptr);
    ASSERT_EQ(overlay.pictures.size(), 1);
    const auto& [image, right, top, fadeIn, displayTime, fadeOut] = overlay.pictures[0];
    EXPECT_EQ(image.deviceIndependentSize().toSize(), QSize(330, 66));
    EXPECT_EQ(image.pixelColor(20, 20), theme->accent()) << "the tile";
    EXPECT_EQ(QPoint(right, top), QPoint(24, 48));
    EXPECT_EQ(fadeIn, 150ms);
    EXPECT_EQ(displayTime, 2600ms);
    EXPECT_EQ(fadeOut, 300ms);
    image.save(QDir(QStringLiteral(QUELTO_PICTURES)).filePath(QStringLiteral("hud-overlay.png")));

    // The picture has all that the window shows.
    showTitleAndSubtitle();
    ASSERT_TRUE(QTest::qWaitFor([this] { return root()->opacity() == 1; }));
    const auto grabbed = const_cast<QQuickView*>(hud->window())->grabWindow();
    EXPECT_EQ(image, grabbed.convertToFormat(image.format()));
}

} // namespace
} // namespace quelto
