// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/LayerOverlay.h"

#include "Compositor.h"

#include <QElapsedTimer>
#include <QStandardPaths>
#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::ChangeMilliseconds;
using test::Compositor;

const auto Red = QColor(255, 0, 0);
const auto Blue = QColor(0, 0, 255);

class LayerOverlayTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        if (!Compositor::isInstalled(Compositor::Kind::sway) ||
            QStandardPaths::findExecutable(QStringLiteral("grim")).isEmpty()) {
            GTEST_SKIP() << "sway or grim is not installed";
        }
        m_compositor = std::make_unique<Compositor>(Compositor::Kind::sway);
        ASSERT_FALSE(m_compositor->display().isEmpty()) << m_compositor->log().toStdString();
        m_overlay = std::make_unique<LayerOverlay>(m_compositor->display());
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_overlay->isAvailable(); }, ChangeMilliseconds));
    }

    static OverlayPicture picture(const QColor& color, std::chrono::milliseconds displayTime)
    {
        QImage image(100, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(color);
        return {.image = image,
                .rightMargin = 24,
                .topMargin = 48,
                .fadeIn = 150ms,
                .displayTime = displayTime,
                .fadeOut = 300ms};
    }

    /// The area of the screen that has this color.
    QRect areaOf(const QColor& color) const
    {
        const auto screen = m_compositor->screenshot();
        QRect area;
        for (int y = 0; y < screen.height(); ++y) {
            for (int x = 0; x < screen.width(); ++x) {
                if (screen.pixelColor(x, y) == color) {
                    area |= QRect(x, y, 1, 1);
                }
            }
        }
        return area;
    }
    bool showsAt(const QColor& color, const QRect& area) const
    {
        return QTest::qWaitFor([&] { return areaOf(color) == area; }, ChangeMilliseconds);
    }
    /// The place of the picture on the screen.
    QRect corner() const
    {
        const auto width = m_compositor->screenshot().width();
        return {width - 24 - 100, 48, 100, 40};
    }

    std::unique_ptr<Compositor> m_compositor;
    std::unique_ptr<LayerOverlay> m_overlay;
};

TEST_F(LayerOverlayTest, ShowsThePictureAboveAFullScreenWindowAndRemovesIt)
{
    test::ForeignWindow game(*m_compositor, QStringLiteral("game"), QStringLiteral("Game"));
    ASSERT_TRUE(game.isShown());
    ASSERT_TRUE(m_compositor->command(QStringLiteral("fullscreen enable")));
    QElapsedTimer time;
    time.start();
    m_overlay->show(picture(Red, 2600ms));
    EXPECT_TRUE(showsAt(Red, corner()));
    EXPECT_TRUE(QTest::qWaitFor([this] { return areaOf(Red).isEmpty(); }, ChangeMilliseconds));
    EXPECT_GE(time.elapsed(), 2600);
}

TEST_F(LayerOverlayTest, TakesNoFocus)
{
    test::ForeignWindow game(*m_compositor, QStringLiteral("game"), QStringLiteral("Game"));
    ASSERT_TRUE(game.isShown());
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_compositor->focusedApplication() == u"game"; }, ChangeMilliseconds));
    m_overlay->show(picture(Red, 60s));
    EXPECT_TRUE(showsAt(Red, corner()));
    EXPECT_EQ(m_compositor->focusedApplication(), u"game");
}

TEST_F(LayerOverlayTest, NewPictureReplacesTheOldOne)
{
    m_overlay->show(picture(Red, 60s));
    EXPECT_TRUE(showsAt(Red, corner()));
    m_overlay->show(picture(Blue, 60s));
    EXPECT_TRUE(showsAt(Blue, corner()));
    EXPECT_TRUE(areaOf(Red).isEmpty());
}

TEST_F(LayerOverlayTest, PictureForAScaledScreenHasTheSameSize)
{
    ASSERT_TRUE(m_compositor->command(QStringLiteral("output * scale 2")));
    auto large = picture(Red, 60s);
    large.image = large.image.scaled(200, 80);
    large.image.setDevicePixelRatio(2);
    m_overlay->show(large);
    const auto width = m_compositor->screenshot().width();
    EXPECT_TRUE(showsAt(Red, {width - 48 - 200, 96, 200, 80}));
}

TEST_F(LayerOverlayTest, IsNotAvailableAfterTheEndOfTheCompositor)
{
    m_overlay->show(picture(Red, 60s));
    EXPECT_TRUE(showsAt(Red, corner()));
    m_compositor->kill();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_overlay->isAvailable(); }, ChangeMilliseconds));
    m_overlay->show(picture(Red, 60s));
}

TEST_F(LayerOverlayTest, EndsWhileTheCompositorHangs)
{
    const auto paused = m_compositor->pause();
    m_overlay->show(picture(Red, 60s));
    QElapsedTimer time;
    time.start();
    m_overlay.reset();
    EXPECT_LT(time.elapsed(), 3000);
}

TEST(LayerOverlay, IsNotAvailableWithoutACompositor)
{
    LayerOverlay overlay(QStringLiteral("/nowhere/wayland-0"));
    overlay.show({});
    QTest::qWait(50);
    EXPECT_FALSE(overlay.isAvailable());
}

} // namespace
} // namespace quelto
