// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/T.h"

#include "tests/media/probe/CounterClip.h"
#include "tests/ui/shell/PlayingShellFixture.h"

namespace quelto {
namespace {

/// Saves pictures of the review of a match, with the real player and real clips, for review.
class ReviewPicturesTest : public test::PlayingShellFixture {
protected:
    /// A match with all clips of the library.
    QUuid matchOfAll()
    {
        const auto game = QStringLiteral("League of Legends");
        matches->gameStarted(game, QStringLiteral("Ahri"));
        for (const auto& clip : library->clips()) {
            matches->clipSaved(clip.path);
        }
        matches->gameEnded(game);
        time.advance(std::chrono::seconds(10));
        return matches->sessions().first().id;
    }
    void open(const QUuid& match)
    {
        navigation->setPage({.kind = Pages::Kind::Review, .match = match});
        time.settle();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !shows(QStringLiteral("0:00 / 0:00")); }));
        QTest::mouseMove(window, {5, 5});
    }
    void press(Qt::Key key) { QTest::keyClick(window, key); }
};

TEST_F(ReviewPicturesTest, States)
{
    const auto match = matchOfAll();
    const auto other = playMatch({"Ace.mp4"});
    QFile::remove(settings.saveFolder() + QStringLiteral("/Ace.mp4"));
    const std::array<Look, 4> looks{{
        {"tr", "ember", {1240, 780}},
        {"de", "blurple", {1240, 780}},
        {"ru", "ocean", {1240, 780}},
        {"es", "cottoncandy", {1240, 780}},
    }};
    for (const auto& look : looks) {
        setLook(look);
        const auto name = QStringLiteral("review-%1-").arg(QLatin1String(look.language));
        open(match);
        show(name + QStringLiteral("start"));
        for (const auto key : {Qt::Key_K, Qt::Key_D, Qt::Key_K, Qt::Key_D}) {
            press(key);
        }
        show(name + QStringLiteral("midway"));
        press(Qt::Key_Space);
        QTest::mouseMove(window, test::middleOf(item(T("Sil"))));
        show(name + QStringLiteral("paused-hover"));
        QTest::mouseMove(window, {5, 5});
        for (int i = 0; i < 9; ++i) {
            press(Qt::Key_X);
        }
        press(Qt::Key_Return);
        show(name + QStringLiteral("end-focus"));
        navigation->setPage({.kind = Pages::Kind::Review, .match = other});
        time.settle();
        show(name + QStringLiteral("empty"));
    }
}

/// The picture of README.md.
TEST_F(ReviewPicturesTest, ForTheReadme)
{
    settings.setLanguage(QStringLiteral("en"));
    time.settle();
    QTest::qWait(100);
    open(matchOfAll());
    for (const auto key : {Qt::Key_K, Qt::Key_D, Qt::Key_K, Qt::Key_K, Qt::Key_D}) {
        press(key);
    }
    show(QStringLiteral("readme-review"));
}

TEST_F(ReviewPicturesTest, OneTallClip)
{
    const auto path = settings.saveFolder() +
        QStringLiteral("/Dota 2 - Ein sehr langer Titel, den niemand kürzen wollte, weil er alles sagt, was in diesem "
                       "Match geschah (9x16).mp4");
    test::GeneratedClips tall;
    ASSERT_TRUE(QFile::copy(test::makeClip(tall, QStringLiteral("a.mp4"), {.size = {360, 640}, .seconds = 3}), path));
    matches->gameStarted(QStringLiteral("Dota 2"), QStringLiteral("Zeus"));
    matches->clipSaved(path);
    matches->gameEnded(QStringLiteral("Dota 2"));
    time.advance(std::chrono::seconds(10));
    open(matches->sessions().first().id);
    press(Qt::Key_D);
    show(QStringLiteral("review-one-tall"));
}

TEST_F(ReviewPicturesTest, LanguagesPalettesAndSizes)
{
    const auto match = matchOfAll();
    const std::array<Look, 5> looks{{
        {"en", "ember", {1440, 900}},
        {"de", "blurple", {1020, 640}},
        {"ru", "ocean", {1020, 640}},
        {"tr", "cottoncandy", {683, 384}},
        {"fr", "sunset", {1600, 1000}},
    }};
    for (const auto& look : looks) {
        setLook(look);
        navigation->showLibrary();
        open(match);
        press(Qt::Key_D);
        press(Qt::Key_Left);
        show(QStringLiteral("review-%1-%2").arg(QLatin1String(look.language)).arg(look.size.width()));
    }
}

} // namespace
} // namespace quelto
