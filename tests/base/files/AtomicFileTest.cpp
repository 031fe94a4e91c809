// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/AtomicFile.h"

#include "tests/base/disk/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace quelto {
namespace {

std::span<const std::byte> bytesOf(const char* text)
{
    return std::as_bytes(std::span(text, std::char_traits<char>::length(text)));
}

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

int errorCodeOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::system_error& error) {
        return error.code().value();
    }
    return 0;
}

TEST(AtomicFile, AppearsUnderItsNameOnlyWhenPublished)
{
    const QTemporaryDir folder;
    AtomicFile file(folder.path());
    file.write(bytesOf("hello"));
    file.flush();
    ASSERT_EQ(entries(folder.path()).size(), 1);
    EXPECT_TRUE(entries(folder.path()).front().startsWith(u'.'));
    EXPECT_TRUE(file.tryPublish(QStringLiteral("a.mp4")));
    EXPECT_EQ(entries(folder.path()), QStringList{QStringLiteral("a.mp4")});
    EXPECT_EQ(contents(folder.filePath(QStringLiteral("a.mp4"))), "hello");
}

TEST(AtomicFile, PublishedFileOutlivesTheObject)
{
    const QTemporaryDir folder;
    {
        AtomicFile file(folder.path());
        ASSERT_TRUE(file.tryPublish(QStringLiteral("a.mp4")));
    }
    EXPECT_EQ(entries(folder.path()), QStringList{QStringLiteral("a.mp4")});
}

TEST(AtomicFile, UnpublishedFileIsDeleted)
{
    const QTemporaryDir folder;
    AtomicFile(folder.path()).write(bytesOf("half"));
    EXPECT_EQ(entries(folder.path()), QStringList{});
}

TEST(AtomicFile, MakesProgressWhileALargeFileIsFlushed)
{
    const QTemporaryDir folder;
    const std::vector<std::byte> bytes(20 << 20);
    AtomicFile file(folder.path());
    file.write(bytes);
    const auto written = AtomicFile::progress();
    file.flush();
    EXPECT_GE(AtomicFile::progress(), written + 4);
}

TEST(AtomicFile, NeverReplacesExistingFile)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("a.mp4"));
    QFile other(path);
    ASSERT_TRUE(other.open(QIODevice::WriteOnly) && other.write("other") == 5);
    other.close();
    AtomicFile file(folder.path());
    file.write(bytesOf("mine"));
    EXPECT_FALSE(file.tryPublish(QStringLiteral("a.mp4")));
    EXPECT_EQ(contents(path), "other");
    EXPECT_TRUE(file.tryPublish(QStringLiteral("a (2).mp4")));
    EXPECT_EQ(contents(folder.filePath(QStringLiteral("a (2).mp4"))), "mine");
}

TEST(AtomicFile, OverwritesAfterSeek)
{
    const QTemporaryDir folder;
    AtomicFile file(folder.path());
    file.write(bytesOf("____world"));
    file.seek(0);
    file.write(bytesOf("my"));
    EXPECT_EQ(file.size(), 9);
    ASSERT_TRUE(file.tryPublish(QStringLiteral("a")));
    EXPECT_EQ(contents(folder.filePath(QStringLiteral("a"))), "my__world");
}

TEST(AtomicFile, DeletesOnlyFilesThatKilledProcessesLeft)
{
    const QTemporaryDir folder;
    std::array<int, 2> ready{};
    ASSERT_EQ(::pipe(ready.data()), 0);
    const auto child = ::fork();
    if (child == 0) {
        AtomicFile file(folder.path());
        file.write(bytesOf("half"));
        [[maybe_unused]] const auto written = ::write(ready[1], "x", 1);
        for (;;) {
            ::pause();
        }
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    QFile unrelated(folder.filePath(QStringLiteral(".quelto-notes")));
    ASSERT_TRUE(unrelated.open(QIODevice::WriteOnly));

    // The file of a running process is kept.
    {
        const AtomicFile file(folder.path());
    }
    EXPECT_EQ(entries(folder.path()).size(), 2);

    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(entries(folder.path()).size(), 2);
    {
        const AtomicFile file(folder.path());
    }
    EXPECT_EQ(entries(folder.path()), QStringList{QStringLiteral(".quelto-notes")});
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST(AtomicFile, ConcurrentWritersGetDistinctNames)
{
    const QTemporaryDir folder;
    constexpr int Writers = 8;
    std::vector<std::jthread> threads;
    threads.reserve(Writers);
    for (int i = 0; i < Writers; ++i) {
        threads.emplace_back([&] {
            AtomicFile file(folder.path());
            file.write(bytesOf("clip"));
            int number = 1;
            while (!file.tryPublish(QString::number(number))) {
                ++number;
            }
        });
    }
    threads.clear();
    QStringList expected;
    for (int i = 1; i <= Writers; ++i) {
        expected += QString::number(i);
    }
    EXPECT_EQ(entries(folder.path()), expected);
}

TEST(AtomicFile, MissingFolderIsAnError)
{
    EXPECT_EQ(errorCodeOf([] { const AtomicFile file(QStringLiteral("/nowhere/at/all")); }), ENOENT);
}

TEST(AtomicFile, FolderDeletedBeforePublishIsAnError)
{
    auto folder = std::make_unique<QTemporaryDir>();
    AtomicFile file(folder->path());
    file.write(bytesOf("clip"));
    folder.reset();
    EXPECT_EQ(errorCodeOf([&] { file.tryPublish(QStringLiteral("a")); }), ENOENT);
}

TEST(AtomicFile, FullDiskIsAnErrorAndLeavesNoFile)
{
    const test::SmallDisk disk(64 * 1024);
    if (!disk.isMounted()) {
        GTEST_SKIP() << "mounting a small disk requires root";
    }
    const std::vector<std::byte> data(256 * 1024);
    EXPECT_EQ(errorCodeOf([&] {
                  AtomicFile file(disk.path());
                  file.write(data);
                  file.flush();
              }),
              ENOSPC);
    EXPECT_EQ(entries(disk.path()), QStringList{});
}

TEST(AtomicFile, ReadOnlyDiskIsAnError)
{
    test::SmallDisk disk(64 * 1024);
    if (!disk.isMounted() || !disk.makeReadOnly()) {
        GTEST_SKIP() << "mounting a small disk requires root";
    }
    EXPECT_EQ(errorCodeOf([&] { const AtomicFile file(disk.path()); }), EROFS);
}

} // namespace
} // namespace quelto
