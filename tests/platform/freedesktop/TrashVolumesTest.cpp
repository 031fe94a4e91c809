// SPDX-License-Identifier: GPL-3.0-or-later
// Uses two volumes, the second of which is a disk image, and restores files with the desktop's own program.
#include "platform/freedesktop/FreedesktopTrash.h"

#include "ChildProcess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <semaphore>
#include <thread>

#include <sched.h>
#include <sys/mount.h>

namespace quelto {
namespace {

using pipewire::ChildProcess;

class TrashVolumesTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        // A private mount namespace: only this program and its children see the mount, which ends with them.
        if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
            GTEST_SKIP() << "mounting is not permitted here";
        }
        // Only now, so that its thread is in the new namespace.
        m_trash = std::make_unique<FreedesktopTrash>();
        QDir().mkpath(m_volume);
        if (shell("truncate -s 16M \"$1.disk\" && mkfs.ext4 -q \"$1.disk\" && mount -o loop \"$1.disk\" \"$1\" 2>&1",
                  m_volume)
                .second != 0) {
            GTEST_SKIP() << "there are no loop devices";
        }
        m_trashService = std::make_unique<ChildProcess>(QStringLiteral("/usr/libexec/gvfsd"),
                                                        QStringList{QStringLiteral("--no-fuse")});
        for (int i = 0; i < 100 && shell("gio trash --list", {}).second != 0; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    }

    void TearDown() override
    {
        if (m_trashService) {
            m_trashService->terminate();
            m_trashService.reset();
        }
        ::umount2(QFile::encodeName(m_volume).constData(), MNT_DETACH);
    }

    /// The output and the exit code.
    static std::pair<QString, int> shell(const char* command, const QString& argument)
    {
        ChildProcess process(QStringLiteral("sh"),
                             {QStringLiteral("-c"), QString::fromUtf8(command), QStringLiteral("sh"), argument});
        const auto output = QString::fromUtf8(process.readAll());
        return {output, process.wait()};
    }

    static void makeFile(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void moveToTrash(const QStringList& paths)
    {
        std::binary_semaphore isDone(0);
        m_trash->moveToTrash(paths, [&] { isDone.release(); });
        ASSERT_TRUE(isDone.try_acquire_for(std::chrono::seconds(10)));
    }

    /// The location in the trash that the desktop lists for the file. Polls, because the desktop updates its list late.
    static QString trashLocationOf(const QString& path)
    {
        QString output;
        for (int i = 0; i < 100; ++i) {
            output = shell("gio trash --list", {}).first;
            for (const auto& line : output.split(u'\n')) {
                if (line.section(u'\t', 1) == path) {
                    return line.section(u'\t', 0, 0);
                }
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        ADD_FAILURE() << "not listed; the list is:\n" << output.toStdString();
        return {};
    }

    QString m_home = QString::fromUtf8(qgetenv("QUELTO_TEST_DIR")) + QStringLiteral("/Videos");
    QString m_volume = QString::fromUtf8(qgetenv("QUELTO_TEST_DIR")) + QStringLiteral("/volume");
    std::unique_ptr<ChildProcess> m_trashService;
    std::unique_ptr<FreedesktopTrash> m_trash;
};

TEST_F(TrashVolumesTest, DesktopRestoresFilesOnBothVolumes)
{
    // ASCII only: gio 2.74 restores other characters as "\xc5\x9f".
    const auto name = QStringLiteral("/Dota 2 - 50%20 #1 [EFSANE 95] ?.mp4");
    makeFile(m_home + name, "at home");
    makeFile(m_volume + name, "elsewhere");
    moveToTrash({m_home + name, m_volume + name});
    EXPECT_FALSE(QFileInfo::exists(m_home + name));
    EXPECT_FALSE(QFileInfo::exists(m_volume + name));
    EXPECT_EQ(contentOf(m_volume + QStringLiteral("/.Trash-%1/files").arg(::getuid()) + name), "elsewhere")
        << "a file is never copied to another volume";
    for (const auto& path : {m_home + name, m_volume + name}) {
        const auto location = trashLocationOf(path);
        ASSERT_FALSE(location.isEmpty()) << path.toStdString();
        const auto [output, status] = shell("gio trash --restore \"$1\" 2>&1", location);
        EXPECT_EQ(status, 0) << output.toStdString();
    }
    EXPECT_EQ(contentOf(m_home + name), "at home");
    EXPECT_EQ(contentOf(m_volume + name), "elsewhere");
}

} // namespace
} // namespace quelto
