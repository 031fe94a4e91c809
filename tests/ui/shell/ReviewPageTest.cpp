// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class ReviewPageTest : public test::ShellFixture {
protected:
    QUuid playedMatch()
    {
        QDir().mkpath(folder.filePath(QStringLiteral("clips")));
        matches->gameStarted(QStringLiteral("League of Legends"), QStringLiteral("Ahri"));
        for (const auto* label : {"[EFSANE 170] PENTAKILL (Ahri)", "[BASIT 15] Solo Kill (Ahri)"}) {
            QFile file(folder.filePath(QStringLiteral("clips/League of Legends - 2026-03-01 20.15.07 ") +
                                       QString::fromUtf8(label) + QStringLiteral(".mp4")));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            matches->clipSaved(file.fileName());
        }
        matches->gameEnded(QStringLiteral("League of Legends"));
        time.advance(10s);
        return matches->sessions().first().id;
    }
};

TEST_F(ReviewPageTest, ShowsTheMatchAndItsClips)
{
    navigation->setPage({.kind = Pages::Kind::Review, .match = playedMatch()});
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("League of Legends • Ahri")));
    EXPECT_TRUE(shows(QStringLiteral("PENTAKILL (Ahri)")));
    EXPECT_TRUE(shows(QStringLiteral("Solo Kill (Ahri)")));
    EXPECT_FALSE(picture(QStringLiteral("review")).isNull());
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(navigation->page(), Page{});
}

TEST_F(ReviewPageTest, ToolTipShowsATitleThatIsCut)
{
    const auto title = QStringLiteral("A title that is far too long for one line of the page of a match, ").repeated(3);
    const auto path = folder.filePath(QStringLiteral("clips/Dota 2 - ") + title + QStringLiteral(".mp4"));
    QDir().mkpath(folder.filePath(QStringLiteral("clips")));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    matches->gameStarted(QStringLiteral("Dota 2"), QString());
    matches->clipSaved(path);
    matches->gameEnded(QStringLiteral("Dota 2"));
    time.advance(10s);
    navigation->setPage({.kind = Pages::Kind::Review, .match = matches->sessions().first().id});
    drawFrame();
    const auto* cut = textItem(title);
    ASSERT_NE(cut, nullptr);
    QTest::mouseMove(window, test::middleOf(cut));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        auto* const overlay =
            test::firstVisible(window, [](const QQuickItem* each) { return each->inherits("QQuickOverlay"); });
        return overlay != nullptr && test::labelOn(overlay, title) != nullptr;
    }));
}

TEST_F(ReviewPageTest, ShowsThatTheMatchWasDeleted)
{
    const auto id = playedMatch();
    navigation->setPage({.kind = Pages::Kind::Review, .match = id});
    matches->deleteSession(id, MatchTracker::WithClips::no);
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("Bu maç artık listede yok")));
    EXPECT_FALSE(shows(QStringLiteral("PENTAKILL (Ahri)")));
    picture(QStringLiteral("review-gone"));
    click(QStringLiteral("Kapat"));
    EXPECT_EQ(navigation->page(), Page{});
}

TEST_F(ReviewPageTest, OpensForAnUnknownMatch)
{
    const Page review{.kind = Pages::Kind::Review, .match = QUuid::createUuid()};
    navigation->setPage(review);
    drawFrame();
    EXPECT_FALSE(shows(QStringLiteral("Bu maç artık listede yok"))) << "the matches are not loaded yet";
    time.settle();
    drawFrame();
    EXPECT_EQ(navigation->page(), review);
    EXPECT_TRUE(shows(QStringLiteral("Bu maç artık listede yok")));
}

TEST_F(ReviewPageTest, ShowsAToastOverThePage)
{
    navigation->showToast(QStringLiteral("Oto klip (Efsane): PENTAKILL (Ahri)"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("Oto klip (Efsane): PENTAKILL (Ahri)")); }));
    picture(QStringLiteral("toast"));
    time.advance(2500ms);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("Oto klip (Efsane): PENTAKILL (Ahri)")); }));
}

} // namespace
} // namespace quelto
