// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/WatchedFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utime.h>

namespace quelto {
namespace {

class WatchedFolderTest : public testing::Test {
protected:
    WatchedFolderTest() { QDir().mkpath(folder); }

    QString path(const char* name) const { return QDir(folder).filePath(QString::fromUtf8(name)); }

    static void makeFile(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }

    /// The words for what the watch has to tell.
    static QString newsOf(WatchedFolder& watched)
    {
        const auto news = watched.takeChanges();
        QStringList words;
        if (news.hasNewEntries) {
            words.append(QStringLiteral("entries"));
        }
        if (news.hasNewContents) {
            words.append(QStringLiteral("contents"));
        }
        if (news.isLost) {
            words.append(QStringLiteral("lost"));
        }
        return words.join(u' ');
    }

    QTemporaryDir parent;
    QString folder = parent.filePath(QStringLiteral("videos/clips"));
};

TEST_F(WatchedFolderTest, TellsOfClipsThatComeMoveAndGo)
{
    WatchedFolder watched(folder);
    EXPECT_EQ(newsOf(watched), QString());
    makeFile(path("a.mp4"));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries contents"));
    ASSERT_TRUE(QFile::rename(path("a.mp4"), path("b.MOV")));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries"));
    ASSERT_TRUE(QFile::rename(path("b.MOV"), parent.filePath(QStringLiteral("b.MOV"))));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries"));
    ASSERT_TRUE(QFile::rename(parent.filePath(QStringLiteral("b.MOV")), path("c.m4v")));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries"));
    ASSERT_TRUE(QFile::remove(path("c.m4v")));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries"));
    EXPECT_EQ(newsOf(watched), QString()) << "it was taken";
}

TEST_F(WatchedFolderTest, HidesWhatIsNoClip)
{
    WatchedFolder watched(folder);
    for (const char* name : {".hidden.mp4", ".a.mp4.json", "a.mp4.part", "notes.txt"}) {
        makeFile(path(name));
        QFile::remove(path(name));
    }
    makeFile(parent.filePath(QStringLiteral("beside.mp4")));
    EXPECT_EQ(newsOf(watched), QString());
    makeFile(path(".made.mp4"));
    ASSERT_TRUE(QFile::rename(path(".made.mp4"), path("made.mp4")));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries"));
}

TEST_F(WatchedFolderTest, TellsOfAFileWhenItIsWrittenAndNotAllTheWhile)
{
    WatchedFolder watched(folder);
    QFile file(path("a.mp4"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries"));
    for (int i = 0; i < 100; ++i) {
        file.write("film");
        file.flush();
    }
    EXPECT_EQ(newsOf(watched), QString());
    file.close();
    EXPECT_EQ(newsOf(watched), QStringLiteral("contents"));
}

TEST_F(WatchedFolderTest, TellsOfAFileThatGetsAnotherDate)
{
    makeFile(path("a.mp4"));
    WatchedFolder watched(folder);
    const utimbuf old{.actime = 1'600'000'000, .modtime = 1'600'000'000};
    ASSERT_EQ(::utime(QFile::encodeName(path("a.mp4")).constData(), &old), 0);
    EXPECT_EQ(newsOf(watched), QStringLiteral("contents"));
}

TEST_F(WatchedFolderTest, TellsWhenTheFolderIsClosedOrOpenedToUs)
{
    WatchedFolder watched(folder);
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0), 0);
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries"));
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0700), 0);
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries"));
}

TEST_F(WatchedFolderTest, IsLostWithItsFolder)
{
    WatchedFolder watched(folder);
    ASSERT_TRUE(QDir(folder).removeRecursively());
    EXPECT_TRUE(newsOf(watched).endsWith(QStringLiteral("lost")));
    WatchedFolder other(folder);
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_EQ(newsOf(other), QStringLiteral("lost")) << "there is one to watch now";
}

TEST_F(WatchedFolderTest, IsLostWhenItsFolderMovesAlsoWithAFolderAbove)
{
    WatchedFolder watched(folder);
    ASSERT_TRUE(QDir().rename(folder, folder + u'2'));
    EXPECT_EQ(newsOf(watched), QStringLiteral("lost"));
    ASSERT_TRUE(QDir().rename(folder + u'2', folder));
    WatchedFolder again(folder);
    const auto above = QFileInfo(folder).path();
    ASSERT_TRUE(QDir().rename(above, above + u'2'));
    EXPECT_EQ(newsOf(again), QStringLiteral("lost"));
}

TEST_F(WatchedFolderTest, WaitsForTheNextPartOfThePathToAppear)
{
    ASSERT_TRUE(QDir(QFileInfo(folder).path()).removeRecursively());
    WatchedFolder watched(folder);
    makeFile(parent.filePath(QStringLiteral("video")));
    makeFile(parent.filePath(QStringLiteral("clips")));
    EXPECT_EQ(newsOf(watched), QString());
    ASSERT_TRUE(QDir().mkpath(QFileInfo(folder).path()));
    EXPECT_EQ(newsOf(watched), QStringLiteral("lost"));
    WatchedFolder again(folder);
    makeFile(folder);
    EXPECT_EQ(newsOf(again), QStringLiteral("lost"));
    WatchedFolder file(folder);
    ASSERT_TRUE(QFile::rename(folder, folder + u'2'));
    EXPECT_EQ(newsOf(file), QStringLiteral("lost")) << "the file is out of the folder's way";
}

TEST_F(WatchedFolderTest, MoreThanTheSystemRemembersIsNewsToo)
{
    QFile limit(QStringLiteral("/proc/sys/fs/inotify/max_queued_events"));
    const int most = limit.open(QIODevice::ReadOnly) ? limit.readAll().trimmed().toInt() : 0;
    if (most == 0 || most > 100'000) {
        GTEST_SKIP() << "the system remembers " << most;
    }
    WatchedFolder watched(folder);
    makeFile(path(".a"));
    auto from = QFile::encodeName(path(".a"));
    auto to = QFile::encodeName(path(".b"));
    // Each of them counts twice.
    for (int i = 0; i <= most / 2; ++i) {
        ASSERT_EQ(std::rename(from.constData(), to.constData()), 0);
        from.swap(to);
    }
    // What was forgotten may have been the end of the folder, which is told once.
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries lost"));
}

TEST_F(WatchedFolderTest, IsLostWhenALinkOnTheWayPointsElsewhere)
{
    const auto at = [this](const char* name) { return parent.filePath(QString::fromUtf8(name)); };
    const auto point = [&](const char* link, const QString& target) {
        // In one step, as a careful person does it.
        ASSERT_TRUE(QFile::link(target, at("fresh")));
        ASSERT_EQ(std::rename(QFile::encodeName(at("fresh")).constData(), QFile::encodeName(at(link)).constData()), 0);
    };
    ASSERT_TRUE(QDir().mkpath(at("disk/inner/clips")));
    ASSERT_TRUE(QDir().mkpath(at("other/inner/clips")));
    // By way of a link that is relative and leads through another one.
    point("current", at("disk"));
    point("films", QStringLiteral("current/inner"));
    const auto way = at("films/clips");
    WatchedFolder watched(way);
    makeFile(at("beside.mp4"));
    EXPECT_EQ(newsOf(watched), QString());
    makeFile(at("disk/inner/clips/a.mp4"));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries contents"));

    point("current", at("other"));
    EXPECT_EQ(newsOf(watched), QStringLiteral("lost"));
    WatchedFolder second(way);
    makeFile(at("disk/inner/clips/b.mp4"));
    EXPECT_EQ(newsOf(second), QString());
    point("films", at("disk/inner"));
    EXPECT_EQ(newsOf(second), QStringLiteral("lost"));
    WatchedFolder third(way);
    ASSERT_TRUE(QDir().rename(at("disk"), at("disk2")));
    EXPECT_EQ(newsOf(third), QStringLiteral("lost")) << "what the link leads through went away";
}

TEST_F(WatchedFolderTest, WaitsForWhatALinkPointsTo)
{
    const auto link = parent.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(parent.filePath(QStringLiteral("disk/clips")), link));
    for (const char* part : {"disk", "disk/clips"}) {
        WatchedFolder watched(link);
        EXPECT_EQ(newsOf(watched), QString());
        ASSERT_TRUE(QDir().mkpath(parent.filePath(QString::fromUtf8(part))));
        EXPECT_EQ(newsOf(watched), QStringLiteral("lost")) << part;
    }
    WatchedFolder watched(link);
    makeFile(parent.filePath(QStringLiteral("disk/clips/a.mp4")));
    EXPECT_EQ(newsOf(watched), QStringLiteral("entries contents"));
}

TEST_F(WatchedFolderTest, LinksThatLeadNowhereHaveAnEnd)
{
    const auto loop = parent.filePath(QStringLiteral("loop"));
    ASSERT_TRUE(QFile::link(QStringLiteral("loop/loop/loop"), loop));
    WatchedFolder watched(loop + QStringLiteral("/clips"));
    EXPECT_EQ(newsOf(watched), QString());
    ASSERT_TRUE(QFile::remove(loop));
    EXPECT_EQ(newsOf(watched), QStringLiteral("lost"));
}

TEST_F(WatchedFolderTest, ClosesItsDescriptorOnce)
{
    const auto openFiles = [] { return QDir(QStringLiteral("/proc/self/fd")).count(); };
    const auto before = openFiles();
    {
        WatchedFolder watched(folder);
        WatchedFolder moved(std::move(watched));
        EXPECT_EQ(openFiles(), before + 1);
        moved = WatchedFolder(folder);
        makeFile(path("a.mp4"));
        EXPECT_EQ(newsOf(moved), QStringLiteral("entries contents"));
    }
    EXPECT_EQ(openFiles(), before);
}

} // namespace
} // namespace quelto
