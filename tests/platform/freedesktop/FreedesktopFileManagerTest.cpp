// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopFileManager.h"

#include "FakeFileManager.h"

#include "base/files/FileName.h"
#include "tests/base/disk/HangingDisk.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

#include <gtest/gtest.h>

namespace quelto {
namespace {

class FreedesktopFileManagerTest : public testing::Test {
protected:
    /// Installs an xdg-open that records the folders it should open.
    static void SetUpTestSuite()
    {
        QFile program(programs().filePath(QStringLiteral("xdg-open")));
        ASSERT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\necho \"$1\" >>\"" + QFile::encodeName(opened()) + "\"\n");
        program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", QFile::encodeName(programs().path()) + ':' + qgetenv("PATH"));
    }

    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        QFile::remove(opened());
    }

    static const QTemporaryDir& programs()
    {
        static const QTemporaryDir folder;
        return folder;
    }
    static QString opened() { return programs().filePath(QStringLiteral("opened")); }

    static QString waitForOpened()
    {
        QFile file(opened());
        static_cast<void>(QTest::qWaitFor([&] { return file.exists() && file.size() > 0; }, 5000));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll().trimmed()) : QString();
    }

    FreedesktopFileManager m_files;
};

TEST_F(FreedesktopFileManagerTest, RevealCallsTheFileManagerWithTheFilesUri)
{
    const FakeFileManager manager;
    for (const char* path : {"/clips/a.mp4", "/clips/50% #1 ?;&=+.mp4", "/clips/Şampiyon \U0001F3C6.mp4",
                             "/clips/two\nlines.mp4", "/clips/%20.mp4"}) {
        m_files.reveal(QString::fromUtf8(path));
    }
    EXPECT_TRUE(manager.shown.isEmpty()) << "reveal() must not block on the call";
    ASSERT_TRUE(QTest::qWaitFor([&] { return manager.shown.size() == 5; }));
    EXPECT_EQ(manager.shown.join(u'|').toStdString(),
              "file:///clips/a.mp4 |file:///clips/50%25%20%231%20%3F;&=+.mp4 "
              "|file:///clips/%C5%9Eampiyon%20%F0%9F%8F%86.mp4 |file:///clips/two%0Alines.mp4 "
              "|file:///clips/%2520.mp4 ");
    EXPECT_FALSE(QFile::exists(opened()));
}

TEST_F(FreedesktopFileManagerTest, RevealOpensTheFolderWithoutAFileManager)
{
    const QTemporaryDir folder;
    m_files.reveal(folder.filePath(QStringLiteral("a.mp4")));
    EXPECT_EQ(waitForOpened(), QUrl::fromLocalFile(folder.path()).toString());
}

TEST_F(FreedesktopFileManagerTest, OpenFolderCreatesAMissingFolder)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("a b/clips"));
    m_files.openFolder(path);
    EXPECT_EQ(waitForOpened(), QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()));
    EXPECT_TRUE(QDir(path).exists());
}

TEST_F(FreedesktopFileManagerTest, OpensFoldersWhoseNamesAreNotText)
{
    const QTemporaryDir folder;
    const auto base = QFile::encodeName(folder.path());
    const auto path = decodeFileName(base + "/a\xff [1]");
    m_files.openFolder(path);
    EXPECT_EQ(waitForOpened(), QString::fromLatin1("file://" + base + "/a%FF%20%5B1%5D"));
    std::vector<std::string> names;
    for (const auto& each : std::filesystem::directory_iterator(base.toStdString())) {
        names.push_back(each.path().filename().string());
    }
    EXPECT_EQ(names, std::vector<std::string>{"a\xff [1]"});
    QFile::remove(opened());
    m_files.reveal(path + QStringLiteral("/clip.mp4"));
    EXPECT_EQ(waitForOpened(), QString::fromLatin1("file://" + base + "/a%FF%20%5B1%5D"));
    std::filesystem::remove_all((base + "/a\xff [1]").toStdString());
}

TEST_F(FreedesktopFileManagerTest, OpenFolderDoesNotWaitForADisk)
{
    test::HangingDisk disk;
    if (!disk.isMounted()) {
        GTEST_SKIP() << "needs root and FUSE to mount a disk";
    }
    const auto path = disk.path() + QStringLiteral("/clips");
    m_files.openFolder(path);
    QTest::qWait(100);
    EXPECT_FALSE(QFile::exists(opened()));
    disk.disconnect();
    EXPECT_EQ(waitForOpened(), QUrl::fromLocalFile(path).toString());
}

TEST_F(FreedesktopFileManagerTest, CreatesTheFolderAlsoWhenItIsDestroyed)
{
    const QTemporaryDir folder;
    {
        FreedesktopFileManager other;
        other.openFolder(folder.filePath(QStringLiteral("clips")));
    }
    EXPECT_TRUE(QDir(folder.filePath(QStringLiteral("clips"))).exists());
    QTest::qWait(100);
    EXPECT_FALSE(QFile::exists(opened()));
}

TEST_F(FreedesktopFileManagerTest, MayBeDestroyedDuringACall)
{
    {
        FreedesktopFileManager other;
        other.reveal(QStringLiteral("/clips/a.mp4"));
    }
    QTest::qWait(200);
    EXPECT_FALSE(QFile::exists(opened()));
}

} // namespace
} // namespace quelto
