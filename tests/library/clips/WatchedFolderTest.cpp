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

    /// The reported changes in words.
    static QString changesOf(WatchedFolder& watched)
    {
        const auto changes = watched.takeChanges();
        QStringList words;
        if (changes.hasNewEntries) {
            words.append(QStringLiteral("entries"));
        }
        if (changes.hasNewContents) {
            words.append(QStringLiteral("contents"));
        }
        if (changes.isLost) {
            words.append(QStringLiteral("lost"));
        }
        return words.join(u' ');
    }

    QTemporaryDir parent;
    QString folder = parent.filePath(QStringLiteral("videos/clips"));
};

TEST_F(WatchedFolderTest, ReportsCreatedMovedAndRemovedClips)
{
    WatchedFolder watched(folder);
    EXPECT_EQ(changesOf(watched), QString());
    makeFile(path("a.mp4"));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries contents"));
    ASSERT_TRUE(QFile::rename(path("a.mp4"), path("b.MOV")));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries"));
    ASSERT_TRUE(QFile::rename(path("b.MOV"), parent.filePath(QStringLiteral("b.MOV"))));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries"));
    ASSERT_TRUE(QFile::rename(parent.filePath(QStringLiteral("b.MOV")), path("c.m4v")));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries"));
    ASSERT_TRUE(QFile::remove(path("c.m4v")));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries"));
    EXPECT_EQ(changesOf(watched), QString()) << "changes are returned once";
}

TEST_F(WatchedFolderTest, IgnoresFilesThatAreNotClips)
{
    WatchedFolder watched(folder);
    for (const char* name : {".hidden.mp4", ".a.mp4.json", "a.mp4.part", "notes.txt"}) {
        makeFile(path(name));
        QFile::remove(path(name));
    }
    makeFile(parent.filePath(QStringLiteral("beside.mp4")));
    EXPECT_EQ(changesOf(watched), QString());
    makeFile(path(".made.mp4"));
    ASSERT_TRUE(QFile::rename(path(".made.mp4"), path("made.mp4")));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries"));
}

TEST_F(WatchedFolderTest, ReportsContentsWhenAFileIsClosedNotOnEveryWrite)
{
    WatchedFolder watched(folder);
    QFile file(path("a.mp4"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries"));
    for (int i = 0; i < 100; ++i) {
        file.write("film");
        file.flush();
    }
    EXPECT_EQ(changesOf(watched), QString());
    file.close();
    EXPECT_EQ(changesOf(watched), QStringLiteral("contents"));
}

TEST_F(WatchedFolderTest, ReportsAChangedModificationTime)
{
    makeFile(path("a.mp4"));
    WatchedFolder watched(folder);
    const utimbuf old{.actime = 1'600'000'000, .modtime = 1'600'000'000};
    ASSERT_EQ(::utime(QFile::encodeName(path("a.mp4")).constData(), &old), 0);
    EXPECT_EQ(changesOf(watched), QStringLiteral("contents"));
}

TEST_F(WatchedFolderTest, ReportsChangedFolderPermissions)
{
    WatchedFolder watched(folder);
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0), 0);
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries"));
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0700), 0);
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries"));
}

TEST_F(WatchedFolderTest, IsLostWhenTheFolderIsRemovedOrCreated)
{
    WatchedFolder watched(folder);
    ASSERT_TRUE(QDir(folder).removeRecursively());
    EXPECT_TRUE(changesOf(watched).endsWith(QStringLiteral("lost")));
    WatchedFolder other(folder);
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_EQ(changesOf(other), QStringLiteral("lost")) << "the folder can be watched now";
}

TEST_F(WatchedFolderTest, IsLostWhenTheFolderOrAParentIsRenamed)
{
    WatchedFolder watched(folder);
    ASSERT_TRUE(QDir().rename(folder, folder + u'2'));
    EXPECT_EQ(changesOf(watched), QStringLiteral("lost"));
    ASSERT_TRUE(QDir().rename(folder + u'2', folder));
    WatchedFolder again(folder);
    const auto above = QFileInfo(folder).path();
    ASSERT_TRUE(QDir().rename(above, above + u'2'));
    EXPECT_EQ(changesOf(again), QStringLiteral("lost"));
}

TEST_F(WatchedFolderTest, IsLostWhenTheNextPathComponentAppears)
{
    ASSERT_TRUE(QDir(QFileInfo(folder).path()).removeRecursively());
    WatchedFolder watched(folder);
    makeFile(parent.filePath(QStringLiteral("video")));
    makeFile(parent.filePath(QStringLiteral("clips")));
    EXPECT_EQ(changesOf(watched), QString());
    ASSERT_TRUE(QDir().mkpath(QFileInfo(folder).path()));
    EXPECT_EQ(changesOf(watched), QStringLiteral("lost"));
    WatchedFolder again(folder);
    makeFile(folder);
    EXPECT_EQ(changesOf(again), QStringLiteral("lost"));
    WatchedFolder file(folder);
    ASSERT_TRUE(QFile::rename(folder, folder + u'2'));
    EXPECT_EQ(changesOf(file), QStringLiteral("lost")) << "the file no longer occupies the path";
}

TEST_F(WatchedFolderTest, QueueOverflowReportsEntriesAndLoss)
{
    QFile file(QStringLiteral("/proc/sys/fs/inotify/max_queued_events"));
    const int limit = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
    if (limit == 0 || limit > 100'000) {
        GTEST_SKIP() << "the event queue holds " << limit;
    }
    WatchedFolder watched(folder);
    makeFile(path(".a"));
    auto from = QFile::encodeName(path(".a"));
    auto to = QFile::encodeName(path(".b"));
    // Each rename queues two events.
    for (int i = 0; i <= limit / 2; ++i) {
        ASSERT_EQ(std::rename(from.constData(), to.constData()), 0);
        from.swap(to);
    }
    // The dropped events may include the removal of the folder, which the kernel reports only once.
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries lost"));
}

TEST_F(WatchedFolderTest, IsLostWhenALinkInThePathChanges)
{
    const auto at = [this](const char* name) { return parent.filePath(QString::fromUtf8(name)); };
    const auto point = [&](const char* link, const QString& target) {
        // Replaces the link atomically.
        ASSERT_TRUE(QFile::link(target, at("fresh")));
        ASSERT_EQ(std::rename(QFile::encodeName(at("fresh")).constData(), QFile::encodeName(at(link)).constData()), 0);
    };
    ASSERT_TRUE(QDir().mkpath(at("disk/inner/clips")));
    ASSERT_TRUE(QDir().mkpath(at("other/inner/clips")));
    // The path has a relative link that leads through another link.
    point("current", at("disk"));
    point("films", QStringLiteral("current/inner"));
    const auto linked = at("films/clips");
    WatchedFolder watched(linked);
    makeFile(at("beside.mp4"));
    EXPECT_EQ(changesOf(watched), QString());
    makeFile(at("disk/inner/clips/a.mp4"));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries contents"));

    point("current", at("other"));
    EXPECT_EQ(changesOf(watched), QStringLiteral("lost"));
    WatchedFolder second(linked);
    makeFile(at("disk/inner/clips/b.mp4"));
    EXPECT_EQ(changesOf(second), QString());
    point("films", at("disk/inner"));
    EXPECT_EQ(changesOf(second), QStringLiteral("lost"));
    WatchedFolder third(linked);
    ASSERT_TRUE(QDir().rename(at("disk"), at("disk2")));
    EXPECT_EQ(changesOf(third), QStringLiteral("lost")) << "a folder that the link leads through was renamed";
}

TEST_F(WatchedFolderTest, IsLostWhenTheTargetOfALinkAppears)
{
    const auto link = parent.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(parent.filePath(QStringLiteral("disk/clips")), link));
    for (const char* part : {"disk", "disk/clips"}) {
        WatchedFolder watched(link);
        EXPECT_EQ(changesOf(watched), QString());
        ASSERT_TRUE(QDir().mkpath(parent.filePath(QString::fromUtf8(part))));
        EXPECT_EQ(changesOf(watched), QStringLiteral("lost")) << part;
    }
    WatchedFolder watched(link);
    makeFile(parent.filePath(QStringLiteral("disk/clips/a.mp4")));
    EXPECT_EQ(changesOf(watched), QStringLiteral("entries contents"));
}

TEST_F(WatchedFolderTest, LinkLoopsTerminate)
{
    const auto loop = parent.filePath(QStringLiteral("loop"));
    ASSERT_TRUE(QFile::link(QStringLiteral("loop/loop/loop"), loop));
    WatchedFolder watched(loop + QStringLiteral("/clips"));
    EXPECT_EQ(changesOf(watched), QString());
    ASSERT_TRUE(QFile::remove(loop));
    EXPECT_EQ(changesOf(watched), QStringLiteral("lost"));
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
        EXPECT_EQ(changesOf(moved), QStringLiteral("entries contents"));
    }
    EXPECT_EQ(openFiles(), before);
}

} // namespace
} // namespace quelto
