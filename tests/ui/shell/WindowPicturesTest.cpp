// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/SampleClips.h"
#include "tests/ui/SceneryClips.h"
#include "tests/ui/shell/ShellFixture.h"

namespace quelto {
namespace {

/// Saves pictures of the whole window with real clips for review. Also run at a scale factor of 2.
class WindowPicturesTest : public test::ShellFixture {
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        record();
    }

    /// Waits until the thumbnails are loaded.
    void show(const QString& name)
    {
        QTest::qWait(500);
        EXPECT_FALSE(picture(name).isNull());
    }
};

TEST_F(WindowPicturesTest, Empty)
{
    EXPECT_TRUE(shows(QStringLiteral("Henüz klip yok")));
    show(QStringLiteral("window-empty"));
}

TEST_F(WindowPicturesTest, TwelveClips)
{
    test::addTwelveClips(settings.saveFolder());
    reloadLibrary();
    EXPECT_TRUE(shows(QStringLiteral("PENTAKILL (Ahri)")));
    const std::array<std::pair<const char*, const char*>, 3> looks{
        {{"en", "ember"}, {"de", "blurple"}, {"ru", "ocean"}}};
    for (const auto& [language, palette] : looks) {
        settings.setLanguage(QLatin1String(language));
        settings.setColorTheme(QLatin1String(palette));
        time.settle();
        show(QStringLiteral("window-12-%1-%2").arg(QLatin1String(language), QLatin1String(palette)));
    }
    window->resize(window->minimumSize());
    show(QStringLiteral("window-12-smallest"));
    EXPECT_EQ(window->size(), QSize(1020, 640));
}

TEST_F(WindowPicturesTest, FiveHundredClipsAndAToast)
{
    test::addClips(settings.saveFolder(), 500);
    reloadLibrary();
    EXPECT_TRUE(shows(QStringLiteral("500")));
    navigation->showToast(QStringLiteral("Klip panoya kopyalandı — Discord'da Ctrl+V ile yapıştırın"));
    show(QStringLiteral("window-500"));
}

TEST_F(WindowPicturesTest, FilteredByGame)
{
    test::addTwelveClips(settings.saveFolder());
    reloadLibrary();
    navigation->showGame(QStringLiteral("Dota 2"));
    show(QStringLiteral("window-game"));
    EXPECT_FALSE(shows(QStringLiteral("PENTAKILL (Ahri)")));
}

/// The pictures of the documentation.
TEST_F(WindowPicturesTest, ForTheDocumentation)
{
    test::addTwelveClips(settings.saveFolder());
    reloadLibrary();
    settings.setLanguage(QStringLiteral("en"));
    time.settle();
    window->resize(1240, 900);
    QTest::qWait(100);
    QTest::mouseMove(window, test::middleOf(textItem(QStringLiteral("Triple Kill (Ahri)"))) - QPoint(0, 100));
    show(QStringLiteral("window-library"));
    QTest::mouseMove(window, {5, 5});
    settings.setColorTheme(QStringLiteral("sunset"));
    show(QStringLiteral("window-library-sunset"));
    settings.setColorTheme(QStringLiteral("blurple"));
    navigation->showGame(QStringLiteral("Dota 2"));
    show(QStringLiteral("window-game-blurple"));
}

/// The pictures of README.md.
TEST_F(WindowPicturesTest, ForTheReadme)
{
    settings.setLanguage(QStringLiteral("en"));
    test::addSceneryClips(settings.saveFolder());
    reloadLibrary();

    // 222 MiB in the buffer, by appending one block many times.
    auto sound = std::make_shared<AudioBuffer>();
    sound->data.resize(std::size_t{1} << 20);
    for (int mebibytes = 0; mebibytes < 222; ++mebibytes) {
        fakes.audioServer->system->events.onBuffer(sound);
    }
    for (const auto* game : {"League of Legends", "Dota 2"}) {
        matches->gameStarted(QLatin1String(game), {});
        for (const auto& clip : library->clips()) {
            if (clip.game == QLatin1String(game)) {
                matches->clipSaved(clip.path);
            }
        }
        matches->gameEnded(QLatin1String(game));
        time.advance(std::chrono::seconds(11));
    }

    window->resize(1240, 900);
    QTest::qWait(100);
    QTest::mouseMove(window, test::middleOf(textItem(QStringLiteral("Triple Kill (Ahri)"))) - QPoint(0, 100));
    show(QStringLiteral("readme-library"));
    QTest::mouseMove(window, {5, 5});

    window->resize(window->minimumSize());
    settings.setColorTheme(QStringLiteral("sunset"));
    show(QStringLiteral("readme-sunset"));
    settings.setLanguage(QStringLiteral("ru"));
    settings.setColorTheme(QStringLiteral("ocean"));
    time.settle();
    show(QStringLiteral("readme-russian"));
    settings.setLanguage(QStringLiteral("en"));
    settings.setColorTheme(QStringLiteral("blurple"));
    navigation->showGame(QStringLiteral("League of Legends"));
    time.settle();
    show(QStringLiteral("readme-game"));
}

} // namespace
} // namespace quelto
