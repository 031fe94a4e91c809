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

int failureOf(const std::function<void()>& action)
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

TEST(AtomicFile, StaysWhenItsObjectGoes)
{
    const QTemporaryDir folder;
    {
        AtomicFile file(folder.path());
        ASSERT_TRUE(file.tryPublish(QStringLiteral("a.mp4")));
    }
    EXPECT_EQ(entries(folder.path()), QStringList{QStringLiteral("a.mp4")});
}

TEST(AtomicFile, LeavesNothingWhenNeverPublished)
{
    const QTemporaryDir folder;
    AtomicFile(folder.path()).write(bytesOf("half"));
    EXPECT_EQ(entries(folder.path()), QStringList{});
}

TEST(AtomicFile, NeverReplacesAFileThatHasTheName)
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

TEST(AtomicFile, SeeksBackAndFillsIn)
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

TEST(AtomicFile, ClearsAwayWhatAKilledProcessLeftBehindAndNothingElse)
{
    const QTemporaryDir folder;
    std::array<int, 2> ready{};
    ASSERT_EQ(::pipe(ready.data()), 0);
    const auto child = ::fork();
    if (child == 0) {
        AtomicFile file(folder.path());
        file.write(bytesOf("half"));
        [[maybe_unused]] const auto told = ::write(ready[1], "x", 1);
        for (;;) {
            ::pause();
        }
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    QFile mine(folder.filePath(QStringLiteral(".quelto-notes")));
    ASSERT_TRUE(mine.open(QIODevice::WriteOnly));

    // While the process lives its file is left alone.
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

TEST(AtomicFile, ManyAtOnceAllGetANameOfTheirOwn)
{
    const QTemporaryDir folder;
    constexpr int Writers = 8;
    std::vector<std::jthread> threads;
    threads.reserve(Writers);
    for (int i = 0; i < Writers; ++i) {
        threads.emplace_back([&] {
            AtomicFile file(folder.path());
            file.write(bytesOf("clip"));
            int mark = 1;
            while (!file.tryPublish(QString::number(mark))) {
                ++mark;
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

TEST(AtomicFile, AMissingFolderIsAnError)
{
    EXPECT_EQ(failureOf([] { const AtomicFile file(QStringLiteral("/nowhere/at/all")); }), ENOENT);
}

TEST(AtomicFile, AFolderThatGoesAwayMeanwhileIsAnError)
{
    auto folder = std::make_unique<QTemporaryDir>();
    AtomicFile file(folder->path());
    file.write(bytesOf("clip"));
    folder.reset();
    EXPECT_EQ(failureOf([&] { file.tryPublish(QStringLiteral("a")); }), ENOENT);
}

TEST(AtomicFile, AFullDiskIsAnErrorAndLeavesNothing)
{
    const test::SmallDisk disk(64 * 1024);
    if (!disk.isThere()) {
        GTEST_SKIP() << "only root may mount a small disk";
    }
    const std::vector<std::byte> data(256 * 1024);
    EXPECT_EQ(failureOf([&] {
                  AtomicFile file(disk.path());
                  file.write(data);
                  file.flush();
              }),
              ENOSPC);
    EXPECT_EQ(entries(disk.path()), QStringList{});
}

TEST(AtomicFile, AReadOnlyDiskIsAnError)
{
    test::SmallDisk disk(64 * 1024);
    if (!disk.isThere() || !disk.makeReadOnly()) {
        GTEST_SKIP() << "only root may mount a small disk";
    }
    EXPECT_EQ(failureOf([&] { const AtomicFile file(disk.path()); }), EROFS);
}

} // namespace
} // namespace quelto
