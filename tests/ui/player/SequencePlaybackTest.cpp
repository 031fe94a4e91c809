// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/BackgroundThreads.h"
#include "base/tasks/MainQueue.h"
#include "playback/mpv/MpvPlayer.h"
#include "ui/player/ClipSequencePlayer.h"

#include "tests/media/probe/CounterClip.h"
#include "tests/ui/QmlFixture.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include <clocale>
#include <filesystem>

Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_PlayerPlugin)

namespace quelto {
namespace {

using namespace test;

/// Each picture shows a number; those of clip 3 start at 3000.
constexpr int NumbersOfAClip = 1000;
/// What the window shows where no clip does.
constexpr int Black = -1;

/// The view of a sequence with the real player and real clips.
class SequencePlaybackTest : public QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        const auto post = [this](Task task) { work.post(std::move(task)); };
        PlaybackForQml::instance.emplace(PlaybackForQml::Parts{
            .model = {.main = main, .work = post}, .createPlayer = [this, post] {
                return std::make_unique<MpvPlayer>(MpvPlayer::Dependencies{.main = main, .work = post});
            }});
        imports = QStringLiteral("import Quelto.Player");
        QmlFixture::show(
            QStringLiteral(
                "ClipSequencePlayer { id: sequence; objectName: 'sequence' }\n"
                "ClipPlayerView { anchors.fill: parent; model: sequence.current; players: sequence.players }"),
            {640, 480});
        sequence = qobject_cast<ClipSequencePlayer*>(object(QStringLiteral("sequence")));
    }
    void TearDown() override
    {
        QmlFixture::TearDown();
        PlaybackForQml::instance.reset();
    }

    QString clip(int number, double seconds = 3)
    {
        return makeClip(clips, QStringLiteral("%1.mp4").arg(number),
                        {.size = {640, 360}, .seconds = seconds, .firstNumber = number * NumbersOfAClip});
    }
    /// Of the video in the window.
    QRect place() const
    {
        const auto* video =
            firstVisible(window, [](const QQuickItem* each) { return each->inherits("quelto::VideoSurface"); });
        return video->mapRectToScene(video->boundingRect()).toRect();
    }
    /// Draws the next picture of the window, and reads the number in it.
    int nextFrame() const
    {
        auto bars = place();
        // Above the disc that marks a pause.
        bars.setHeight(bars.height() / 3);
        return numberOf(window->grabWindow(), bars);
    }
    bool isShown(int clipNumber)
    {
        return QTest::qWaitFor([&] { return clipOf(nextFrame()) == clipNumber; });
    }
    static int clipOf(int number) { return number < 0 ? Black : number / NumbersOfAClip; }
    /// The clips that the window shows until the current clip has played so long, without repetitions.
    std::vector<int> shownUntil(double time)
    {
        std::vector<int> shown;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const auto number = clipOf(nextFrame());
            if (shown.empty() || shown.back() != number) {
                shown.push_back(number);
            }
            return sequence->current()->time() >= time;
        }));
        return shown;
    }
    ClipPlayer& other() const
    {
        const auto& all = sequence->players();
        return *(all.first() == sequence->current() ? all.last() : all.first());
    }
    static bool isOpen(const ClipPlayer& player) { return !player.player().isOpening() && player.duration() > 0; }
    /// Plays a clip while the other player opens the following one.
    void play(const QString& path, const QString& following)
    {
        sequence->show(path);
        sequence->setFollowing(following);
        ASSERT_TRUE(QTest::qWaitFor([&] { return isOpen(*sequence->current()); }));
        ASSERT_TRUE(QTest::qWaitFor([&] { return sequence->players().size() == 2 && isOpen(other()); }));
        // Longer than a picture takes from the decoder to the window. On a slow machine the clip can end before that.
        QTest::qWait(400);
    }
    static std::ptrdiff_t threadCount()
    {
        return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
    }
    /// How many files of the test's clips are open.
    int openClips() const
    {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code error;
            const auto target = std::filesystem::read_symlink(entry.path(), error);
            count += target.extension() == ".mp4" ? 1 : 0;
        }
        return count;
    }

    MainQueue main;
    BackgroundThreads work{QStringLiteral("work"), 1};
    GeneratedClips clips;
    ClipSequencePlayer* sequence = nullptr;
};

TEST_F(SequencePlaybackTest, VeryNextFrameShowsTheClipThatWasOpenedAhead)
{
    const QStringList paths{clip(1), clip(2), clip(3), clip(4), clip(5)};
    play(paths.at(0), paths.at(1));
    for (int i = 1; i < paths.size(); ++i) {
        sequence->show(paths.at(i));
        const auto number = nextFrame();
        const auto first = (i + 1) * NumbersOfAClip;
        EXPECT_GE(number, first);
        EXPECT_LE(number, first + 3);
        if (i + 1 < paths.size()) {
            sequence->setFollowing(paths.at(i + 1));
            EXPECT_EQ(shownUntil(0.8), std::vector{i + 1});
            ASSERT_TRUE(QTest::qWaitFor([&] { return isOpen(other()); }));
        }
    }
}

TEST_F(SequencePlaybackTest, PictureBeforeStaysUntilAClipThatIsStillOpeningIsThere)
{
    const QStringList paths{clip(1), clip(2), clip(3), clip(4)};
    play(paths.at(0), paths.at(1));
    for (int i = 1; i + 1 < paths.size(); ++i) {
        sequence->show(paths.at(i));
        ASSERT_EQ(clipOf(nextFrame()), i + 1);
        sequence->setFollowing(paths.at(i + 1));
        ASSERT_TRUE(other().player().isOpening());
        sequence->show(paths.at(i + 1));
        EXPECT_EQ(shownUntil(0.2), (std::vector{i + 1, i + 2}));
        play(paths.at(i), paths.at(i + 1));
    }
}

TEST_F(SequencePlaybackTest, PictureBeforeStaysUntilAClipThatWasNotOpenedAheadIsThere)
{
    const QStringList paths{clip(1), clip(2), clip(3)};
    play(paths.at(0), paths.at(1));
    sequence->show(paths.at(2));
    EXPECT_EQ(shownUntil(0.3), (std::vector{1, 3}));
    sequence->show(paths.at(0));
    EXPECT_EQ(shownUntil(0.3), (std::vector{3, 1}));
}

TEST_F(SequencePlaybackTest, UnplayableFollowingClipIsBlackAndTheNextOnePlays)
{
    QFile broken(folder.filePath(QStringLiteral("broken.mp4")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write(QByteArray(4096, 'x'));
    broken.close();
    const auto first = clip(1);
    const auto last = clip(2);
    for (const auto& path : {broken.fileName(), QStringLiteral("/missing.mp4")}) {
        sequence->show(first);
        sequence->setFollowing(path);
        ASSERT_TRUE(QTest::qWaitFor([&] { return sequence->players().size() == 2 && !other().player().isOpening(); }));
        ASSERT_TRUE(isShown(1));
        sequence->show(path);
        EXPECT_TRUE(isShown(Black));
        EXPECT_EQ(sequence->current()->duration(), 0);
        sequence->setFollowing(last);
        sequence->show(last);
        EXPECT_TRUE(isShown(2));
        sequence->setFollowing({});
    }
}

TEST_F(SequencePlaybackTest, ClipThatBecomesUnplayableWhileItOpensIsBlack)
{
    const auto first = clip(1);
    play(first, clip(2));
    sequence->setFollowing(QStringLiteral("/missing.mp4"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return other().player().isOpening(); }));
    sequence->show(QStringLiteral("/missing.mp4"));
    EXPECT_TRUE(isShown(Black));
    sequence->show(first);
    EXPECT_TRUE(isShown(1));
}

TEST_F(SequencePlaybackTest, OpenedClipPlaysAlthoughItsFileIsDeleted)
{
    const auto second = clip(2);
    play(clip(1), second);
    QFile::remove(second);
    sequence->show(second);
    EXPECT_EQ(clipOf(nextFrame()), 2);
    EXPECT_EQ(shownUntil(0.5), std::vector{2});
}

TEST_F(SequencePlaybackTest, LastOfManyQuickClipsPlays)
{
    QStringList paths;
    for (int i = 1; i <= 8; ++i) {
        paths.append(clip(i, 1.5));
    }
    play(paths.at(0), paths.at(1));
    const auto threads = threadCount();
    constexpr int Count = 200;
    constexpr int Interval = 15;
    qint64 longest = 0;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i <= Count; ++i) {
        // As a page does while a key is held.
        QElapsedTimer call;
        call.start();
        sequence->setFollowing(paths.at((i + 1) % paths.size()));
        sequence->show(paths.at(i % paths.size()));
        longest = std::max(longest, call.elapsed());
        EXPECT_TRUE(QTest::qWaitFor([&] { return timer.elapsed() >= (i + 1) * Interval; }));
    }
    std::printf("%lld ms for %d clips, at most %lld ms for one\n", timer.elapsed(), Count, longest);
    EXPECT_LT(longest, 100) << "the test shares the processor with two decoders";
    const int last = Count % static_cast<int>(paths.size()) + 1;
    EXPECT_TRUE(isShown(last));
    EXPECT_TRUE(QTest::qWaitFor([&] { return sequence->current()->time() > 0.5; }));
    EXPECT_EQ(shownUntil(0.8), std::vector{last});
    EXPECT_NEAR(sequence->current()->duration(), 1.5, 0.1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return threadCount() <= threads + 2; })) << threadCount() << ", " << threads;
    // And the clip that follows it is open.
    sequence->show(paths.at((Count + 1) % paths.size()));
    EXPECT_EQ(clipOf(nextFrame()), (Count + 1) % paths.size() + 1);
}

TEST_F(SequencePlaybackTest, ClipChangesInFullScreenToo)
{
    const QStringList paths{clip(1), clip(2), clip(3)};
    play(paths.at(0), paths.at(1));
    click(itemNamed(window, QStringLiteral("Tam ekran")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return place().width() == window->width(); }));
    EXPECT_TRUE(isShown(1));
    sequence->show(paths.at(1));
    EXPECT_EQ(clipOf(nextFrame()), 2);
    play(paths.at(1), paths.at(2));
    press(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return place().width() < window->width(); }));
    EXPECT_TRUE(isShown(2));
    sequence->show(paths.at(2));
    EXPECT_EQ(clipOf(nextFrame()), 3);
}

TEST_F(SequencePlaybackTest, StopReleasesAllFiles)
{
    const auto first = clip(1);
    const auto second = clip(2);
    play(first, second);
    EXPECT_EQ(openClips(), 2);
    sequence->stop();
    EXPECT_TRUE(QTest::qWaitFor([&] { return openClips() == 0; }));
    sequence->show(second);
    EXPECT_TRUE(isShown(2));
}

TEST_F(SequencePlaybackTest, SpeedStaysWhenTheClipChanges)
{
    // Few pictures, so that a busy machine can play them at twice the speed.
    const auto second =
        makeClip(clips, QStringLiteral("2.mp4"), {.size = {320, 180}, .rate = QStringLiteral("5"), .seconds = 8});
    play(clip(1), second);
    sequence->current()->setRate(2);
    sequence->show(second);
    EXPECT_EQ(sequence->current()->player().rate(), 2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sequence->current()->time() > 0.4; }));
    QElapsedTimer timer;
    timer.start();
    const auto start = sequence->current()->time();
    ASSERT_TRUE(QTest::qWaitFor([&] { return sequence->current()->time() > start + 4; }));
    const auto played = sequence->current()->time() - start;
    // A busy machine plays more slowly than it should. At the usual speed it would be 1 at most.
    EXPECT_GT(played / (static_cast<double>(timer.elapsed()) / 1000), 1.15);
}

} // namespace
} // namespace quelto

int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv);
    // The constructor of the application takes the user's.
    std::setlocale(LC_NUMERIC, "C");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
