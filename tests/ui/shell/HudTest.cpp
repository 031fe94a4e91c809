// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/Hud.h"

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

    /// Draws the notice and keeps it as a picture.
    void keep(const QString& name)
    {
        QTest::qWait(300);
        const_cast<QQuickView*>(hud->window())->grabWindow().save(QDir(QStringLiteral(QUELTO_PICTURES)).filePath(name));
    }

    std::unique_ptr<Hud> hud;
};

TEST_F(HudTest, StandsInTheCornerWithoutTakingFocusOrPointer)
{
    hud->show({.title = QStringLiteral("Klip kaydedildi"), .subtitle = QStringLiteral("Dota 2 - 2026-03-01 20.15.07")});
    const auto screen = hud->window()->screen()->geometry();
    EXPECT_EQ(hud->window()->geometry(), QRect(screen.right() + 1 - 330 - 24, screen.top() + 48, 330, 66));
    for (const auto flag : {Qt::BypassWindowManagerHint, Qt::WindowTransparentForInput, Qt::WindowDoesNotAcceptFocus}) {
        EXPECT_TRUE(hud->window()->flags().testFlag(flag));
    }
    EXPECT_TRUE(hud->window()->isVisible());
}

TEST_F(HudTest, StandsForItsTimeThenFadesAndGoes)
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

TEST_F(HudTest, FadesInQuicklyAndOutSlowly)
{
    hud->show({.title = QStringLiteral("A"), .subtitle = QString()});
    const auto opacity = [this] { return shown("opacity").toDouble(); };
    EXPECT_LT(opacity(), 1);
    QTRY_COMPARE(opacity(), 1.0);
    time.advance(2600ms);
    QElapsedTimer sinceLeaving;
    sinceLeaving.start();
    QTRY_COMPARE(opacity(), 0.0);
    EXPECT_GE(sinceLeaving.elapsed(), 270);
}

TEST_F(HudTest, ANewNoticeTakesThePlaceAtOnceAndHasItsWholeTime)
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

TEST_F(HudTest, ShowsWhatItIsAbout)
{
    struct Case {
        HudNotice notice;
        const char* symbol;
        const char* picture;
    };
    const auto russian = QString::fromUtf8("Не удалось сохранить клип: на диске недостаточно свободного места");
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
        hud->show(each.notice);
        EXPECT_EQ(shown("symbol").toString(), QLatin1String(each.symbol));
        EXPECT_EQ(shown("subtitle").toString(), each.notice.subtitle);
        keep(QLatin1String(each.picture));
    }
}

} // namespace
} // namespace quelto
