// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopTrash.h"

#include "ChildProcess.h"
#include "base/files/FileName.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <semaphore>

#include <sys/stat.h>
#include <unistd.h>

namespace quelto {
namespace {

using pipewire::ChildProcess;

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

dev_t volumeOf(const QString& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0) << path.toStdString();
    return status.st_dev;
}

class FreedesktopTrashTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
    }

    QString makeFile(const QString& name, const QByteArray& content = "film") const
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }

    void moveToTrash(const QStringList& paths)
    {
        std::binary_semaphore isDone(0);
        m_trash.moveToTrash(paths, [&] { isDone.release(); });
        ASSERT_TRUE(isDone.try_acquire_for(std::chrono::seconds(10)));
    }

    /// Another program restores the newest file that was at the path.
    static void restore(const QString& path)
    {
        ChildProcess process(
            QStringLiteral("sh"),
            {QStringLiteral("-c"), QStringLiteral("echo 0 | trash-restore \"$1\""), QStringLiteral("sh"), path});
        const QByteArray output = process.readAll();
        EXPECT_EQ(process.wait(), 0) << output.toStdString();
    }

    QTemporaryDir m_folder{QString::fromUtf8(qgetenv("QUELTO_TEST_DIR")) + QStringLiteral("/Videos/XXXXXX")};
    FreedesktopTrash m_trash;
};

TEST_F(FreedesktopTrashTest, AnotherProgramRestoresTheFileUnderItsName)
{
    for (const QString& name : {QStringLiteral("Dota 2 - Rampage (2026-11-21 02.00.00) [epic 98].mp4"),
                                QStringLiteral("50%20 Şampiyon 100% ü.mp4"), QStringLiteral("a \"b\" 'c' $(d) #e?.mp4"),
                                QStringLiteral("-f.mp4")}) {
        const QString path = makeFile(name, name.toUtf8());
        moveToTrash({path});
        EXPECT_FALSE(QFileInfo::exists(path)) << name.toStdString();
        restore(path);
        EXPECT_EQ(contentOf(path), name.toUtf8()) << name.toStdString();
    }
}

TEST_F(FreedesktopTrashTest, TakesAFileWhoseNameIsNotValidUtf8)
{
    const QByteArray path = QFile::encodeName(makeFile(QStringLiteral("a.mp4")));
    const QByteArray other = path.chopped(5) + "B\xfcy\xfck.mp4";
    ASSERT_EQ(std::rename(path.constData(), other.constData()), 0);
    moveToTrash({decodeFileName(other)});
    EXPECT_NE(access(other.constData(), F_OK), 0);
    EXPECT_EQ(access((qgetenv("XDG_DATA_HOME") + "/Trash/files/B\xfcy\xfck.mp4").constData(), F_OK), 0);
}

TEST_F(FreedesktopTrashTest, KeepsAllFilesWithTheSameName)
{
    const QDir files(QString::fromUtf8(qgetenv("XDG_DATA_HOME")) + QStringLiteral("/Trash/files"));
    for (const QByteArray content : {"first", "second", "third"}) {
        moveToTrash({makeFile(QStringLiteral("same.mp4"), content)});
    }
    QList<QByteArray> kept;
    for (const QFileInfo& file : files.entryInfoList({QStringLiteral("same*")}, QDir::Files)) {
        kept.append(contentOf(file.filePath()));
    }
    std::ranges::sort(kept);
    EXPECT_EQ(kept, (QList<QByteArray>{"first", "second", "third"}));
}

TEST_F(FreedesktopTrashTest, DestructorWaitsForRequestedFiles)
{
    constexpr int Count = 200;
    QStringList files;
    for (int i = 0; i < Count; ++i) {
        files.append(makeFile(QStringLiteral("ends %1.mp4").arg(i)));
    }
    {
        FreedesktopTrash trash;
        for (const auto& file : files) {
            trash.moveToTrash({file}, {});
        }
    }
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty());
}

TEST_F(FreedesktopTrashTest, SkipsMissingFiles)
{
    const QString first = makeFile(QStringLiteral("first.mp4"));
    const QString last = makeFile(QStringLiteral("last.mp4"));
    moveToTrash({first, m_folder.filePath(QStringLiteral("none.mp4")), QString(), last});
    EXPECT_FALSE(QFileInfo::exists(first));
    EXPECT_FALSE(QFileInfo::exists(last));
    moveToTrash({});
    m_trash.moveToTrash({m_folder.filePath(QStringLiteral("none.mp4"))}, {});
}

TEST_F(FreedesktopTrashTest, MovesALinkAndNotItsTarget)
{
    const QString target = makeFile(QStringLiteral("target.mp4"));
    const QString link = m_folder.filePath(QStringLiteral("link.mp4"));
    ASSERT_TRUE(QFile::link(target, link));
    moveToTrash({link});
    EXPECT_FALSE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contentOf(target), "film");
}

TEST_F(FreedesktopTrashTest, LeavesAFileInAReadOnlyFolder)
{
    const QString path = QStringLiteral("/proc/self/status");
    moveToTrash({path});
    EXPECT_FALSE(contentOf(path).isEmpty());
}

TEST_F(FreedesktopTrashTest, UsesTheTrashOfTheFilesVolume)
{
    const QString volume = QStringLiteral("/dev/shm");
    if (!QFileInfo(volume).isWritable() || volumeOf(volume) == volumeOf(m_folder.path())) {
        GTEST_SKIP() << "there is no second volume";
    }
    const QTemporaryDir folder(volume + QStringLiteral("/quelto-XXXXXX"));
    const QString name = QFileInfo(folder.path()).fileName() + QStringLiteral(".mp4");
    const QString path = folder.filePath(name);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("film");
    file.close();
    const QString trash = QStringLiteral("%1/.Trash-%2/").arg(volume).arg(getuid());
    moveToTrash({path});
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_EQ(contentOf(trash + QStringLiteral("files/") + name), "film");
    EXPECT_TRUE(
        contentOf(trash + QStringLiteral("info/") + name + QStringLiteral(".trashinfo")).contains(name.toUtf8()));
    // Cleans up, because the volume does not belong to the private desktop.
    QFile::remove(trash + QStringLiteral("files/") + name);
    QFile::remove(trash + QStringLiteral("info/") + name + QStringLiteral(".trashinfo"));
    for (const char* left : {"files", "info", ""}) {
        QDir().rmdir(trash + QString::fromUtf8(left));
    }
}

} // namespace
} // namespace quelto
