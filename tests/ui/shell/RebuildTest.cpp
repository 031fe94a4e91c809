// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/SampleClips.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>
#include <QTimer>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace quelto {
namespace {

/// A change of theme or language rebuilds the content of the window.
class RebuildTest : public test::ShellFixture {
protected:
    QQuickItem* content() const
    {
        return test::firstVisible(window, [](const QQuickItem* each) {
            return QByteArray(each->metaObject()->className()).startsWith("ContentView_QMLTYPE");
        });
    }

    /// Of visible and of unused cards.
    qsizetype cardCount() const
    {
        const auto* grid = test::firstVisible(window, [](const QQuickItem* each) {
            return QByteArray(each->metaObject()->className()).startsWith("CardGrid_QMLTYPE");
        });
        const auto items = grid->findChildren<QQuickItem*>(QStringLiteral("cards")).value(0);
        const auto children = items->property("contentItem").value<QQuickItem*>()->childItems();
        return std::ranges::count_if(children, [](const QQuickItem* each) {
            return QByteArray(each->metaObject()->className()).startsWith("ClipCard_QMLTYPE");
        });
    }

    void changeThemes(int count)
    {
        const auto palettes = Palette::all();
        for (int i = 0; i < count; ++i) {
            auto* const old = content();
            settings.setColorTheme(palettes.at((i + 1) % palettes.size()).id);
            ASSERT_TRUE(QTest::qWaitFor([&] { return content() != nullptr && content() != old; }));
            drawFrame();
        }
        // Deletes what is left of the last one.
        QTest::qWait(1);
        drawFrame();
    }
};

TEST_F(RebuildTest, OldContentIsDeletedBeforeTheNewIsCreated)
{
    auto* const old = content();
    auto* const loader = old->parentItem();
    std::optional<bool> wasAlone;
    QEventLoop loop;
    QObject::connect(old, &QObject::destroyed, loader, [&] {
        wasAlone = loader->property("item").value<QObject*>() == nullptr;
        loop.quit();
    });
    QTimer::singleShot(0, loader, [&] { settings.setColorTheme(QStringLiteral("ocean")); });
    QTimer::singleShot(5000, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_EQ(wasAlone, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return content() != nullptr; }));
}

TEST_F(RebuildTest, DrawsNoFrameWithoutContent)
{
    int frames = 0;
    int emptyFrames = 0;
    QObject::connect(window, &QQuickWindow::beforeRendering, window, [&] {
        ++frames;
        emptyFrames += content() == nullptr ? 1 : 0;
    });
    QEventLoop loop;
    QTimer::singleShot(0, window, [&] { settings.setColorTheme(QStringLiteral("ocean")); });
    QTimer::singleShot(500, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_GT(frames, 0);
    EXPECT_EQ(emptyFrames, 0);
}

TEST_F(RebuildTest, CreatesOnlyTheCardsThatTheViewNeeds)
{
    test::addClips(settings.saveFolder(), 100);
    reloadLibrary();
    // The view has its final height when it becomes wider, so it creates only what it needs.
    window->resize(1240, 1400);
    drawFrame();
    window->resize(2400, 1400);
    drawFrame();
    const auto before = cardCount();
    EXPECT_GT(before, 40);
    changeThemes(1);
    EXPECT_EQ(cardCount(), before);
}

#ifdef __GLIBC__
TEST_F(RebuildTest, UsesNoMoreMemoryAfterManyChangesOfTheme)
{
    test::addTwelveClips(settings.saveFolder());
    reloadLibrary();
    const auto megabytesInUse = [] {
        const auto info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd) / 1e6;
    };
    // Each palette once: Qt keeps some data for each colour.
    changeThemes(10);
    const auto before = megabytesInUse();
    changeThemes(40);
    const auto grown = megabytesInUse() - before;
    // The content of the window takes more than that once.
    EXPECT_LT(grown, 2);
}
#endif

} // namespace
} // namespace quelto
