// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/SaveFailure.h"

#include "base/files/AtomicFile.h"

#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QDir>
#include <QTest>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class SaveFailureTest : public test::ShellFixture {
protected:
    const QString message = QStringLiteral("Klip yazılamadı: Diskte yer kalmadı.");
    const QString dismiss = QStringLiteral("Uyarıyı kaldır");

    void save()
    {
        recorder->saveClip();
        time.advance(250ms);
        time.settle();
    }

    void failASave()
    {
        record();
        whileWriting = [] { throw RecorderError::writer(QStringLiteral("Diskte yer kalmadı.")); };
        save();
        whileWriting = {};
        ASSERT_TRUE(shows(message));
    }
};

TEST_F(SaveFailureTest, IsShownInRedUntilASaveSucceeds)
{
    failASave();
    EXPECT_EQ(test::colorOf(textItem(message)), theme->live());
    picture(QStringLiteral("window-save-failed"));
    time.advance(1min);
    EXPECT_TRUE(shows(message));
    save();
    ASSERT_EQ(savedPaths.size(), 1);
    EXPECT_FALSE(shows(message));
}

TEST_F(SaveFailureTest, NamesAClipThatAnEarlierProcessLeftUnfinished)
{
    QDir().mkpath(settings.saveFolder());
    const auto name = QStringLiteral(".quelto-1-0.part");
    QFile file(settings.saveFolder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    saveFailure->findUnfinishedClip();
    time.advance(2s);
    EXPECT_TRUE(
        shows(QStringLiteral("Önceki klip tamamlanamadı. Yarım kalan dosya sonraki kayıtta silinecek: ") + name));
    picture(QStringLiteral("window-unfinished-clip"));
}

TEST_F(SaveFailureTest, NamesNoUnfinishedClipAfterASave)
{
    QDir().mkpath(settings.saveFolder());
    QFile file(settings.saveFolder() + QStringLiteral("/.quelto-1-0.part"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    record();
    saveFailure->findUnfinishedClip();
    save();
    ASSERT_EQ(savedPaths.size(), 1);
    time.advance(2s);
    EXPECT_EQ(saveFailure->message(), QString());
}

TEST_F(SaveFailureTest, FindsNoUnfinishedClipWhileItIsStillWritten)
{
    QDir().mkpath(settings.saveFolder());
    const AtomicFile writing(settings.saveFolder());
    saveFailure->findUnfinishedClip();
    time.advance(2s);
    EXPECT_EQ(saveFailure->message(), QString());
}

TEST_F(SaveFailureTest, IsGoneWhenTheNextSessionStarts)
{
    failASave();
    recorder->stop();
    time.settle();
    EXPECT_TRUE(shows(message)) << "the end of a session leaves the message";
    recorder->start();
    EXPECT_FALSE(shows(message));
}

TEST_F(SaveFailureTest, IsGoneWhenTheSaveFolderChanges)
{
    failASave();
    settings.setSaveFolder(folder.filePath(QStringLiteral("other")));
    EXPECT_FALSE(shows(message));
}

TEST_F(SaveFailureTest, IsGoneWhenTheSaveFolderIsWritableAgain)
{
    isFolderWritable = false;
    failASave();
    time.advance(1min);
    EXPECT_TRUE(shows(message));
    isFolderWritable = true;
    time.advance(4s);
    EXPECT_FALSE(shows(message));
}

TEST_F(SaveFailureTest, FolderOfAnEarlierFailureDoesNotRemoveALaterMessage)
{
    isFolderWritable = false;
    failASave();
    time.advance(1min);
    isFolderWritable = true;
    failASave();
    time.advance(1min);
    EXPECT_TRUE(shows(message)) << "the folder was writable when this save failed";
}

TEST_F(SaveFailureTest, MayBeDestroyedWhileTheFolderIsExamined)
{
    test::ManualQueue work{time};
    auto failure = std::make_unique<SaveFailure>(
        SaveFailure::Dependencies{.recorder = *recorder, .settings = settings, .main = main, .work = work});
    failASave();
    EXPECT_EQ(failure->message(), message);
    failure.reset();
    time.advance(1min);
}

TEST_F(SaveFailureTest, IsDismissedByItsButton)
{
    failASave();
    drawFrame();
    const auto* words = textItem(message);
    const auto text = test::placeOf(words);
    const auto lineHeight = text.height() / words->property("lineCount").toInt();
    const auto button = test::placeOf(item(dismiss));
    EXPECT_GE(button.left(), text.right());
    EXPECT_NEAR(button.center().y(), text.top() + lineHeight / 2, 1) << "in line with the first line";
    click(dismiss);
    EXPECT_FALSE(shows(message));
}

TEST_F(SaveFailureTest, IsDismissedByKeyAndPassesTheFocusOn)
{
    failASave();
    window->requestActivate();
    for (int i = 0; i < 40 && !item(dismiss)->hasActiveFocus(); ++i) {
        QTest::keyClick(window, Qt::Key_Tab);
    }
    ASSERT_TRUE(item(dismiss)->hasActiveFocus());
    picture(QStringLiteral("window-save-failed-focus"));
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_FALSE(shows(message));
    EXPECT_TRUE(item(QStringLiteral("Klip Kaydet"))->hasActiveFocus());
}

TEST(IsWritableFolder, IsFalseForAMissingFolderAndForAFile)
{
    const QTemporaryDir folder;
    EXPECT_TRUE(isWritableFolder(folder.path()));
    EXPECT_FALSE(isWritableFolder(folder.filePath(QStringLiteral("missing"))));
    QFile file(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(isWritableFolder(file.fileName()));
}

} // namespace
} // namespace quelto
