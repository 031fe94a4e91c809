// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogTail.h"

#include "tests/base/files/UnprivilegedUser.h"
#include "tests/moments/wow/TestFolder.h"

#include <QByteArrayList>

#include <gtest/gtest.h>

#include <unistd.h>

namespace quelto {
namespace {

namespace fs = std::filesystem;

// Units: seconds since the last write.
constexpr double RecentAge = 0.5;
constexpr double OldAge = 60;

QByteArray line(int number)
{
    return "8/3 22:09:58.548  UNIT_DIED," + QByteArray::number(number);
}

class LogTailTest : public testing::Test {
protected:
    fs::path file(const fs::path& name = "WoWCombatLog.txt") const { return folder.path() / name; }

    /// Follows the newest log; returns the lines read.
    QByteArrayList followNewest(double age = RecentAge)
    {
        if (const auto log = newestLog({folder.path()})) {
            tail.follow(*log, age);
        }
        return std::exchange(m_read, {});
    }

    /// Saves a new file under the log's name, as editors do.
    void replace(const QByteArray& content) const
    {
        TestFolder::write(file("new"), content);
        fs::rename(file("new"), file());
    }

    TestFolder folder;
    LogTail tail{[this](QByteArrayView text) { m_read.append(text.toByteArray()); }};

private:
    QByteArrayList m_read;
};

TEST_F(LogTailTest, ReadsNewLogFromStart)
{
    TestFolder::write(file(), line(1) + '\n');
    EXPECT_EQ(followNewest(4.9), QByteArrayList{line(1)});
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file(), line(2) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(2)});
}

TEST_F(LogTailTest, ReadsOldLogFromEnd)
{
    TestFolder::write(file(), line(1) + '\n');
    EXPECT_EQ(followNewest(5.0), QByteArrayList());
    TestFolder::append(file(), line(2) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(2)});
}

TEST_F(LogTailTest, ReadsLargeLogFromEnd)
{
    const auto first = line(1) + '\n';
    TestFolder::write(file(), first + QByteArray(64'000 - first.size(), '\n'));
    EXPECT_EQ(followNewest(), QByteArrayList());
    tail.close();
    TestFolder::write(file(), first + QByteArray(63'999 - first.size(), '\n'));
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
}

TEST_F(LogTailTest, ReadsLineFromSeveralWritesOnce)
{
    TestFolder::write(file(), "");
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file(), line(1).left(22));
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file(), line(1).mid(22));
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file(), "\n" + line(2));
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
    TestFolder::append(file(), "\n");
    EXPECT_EQ(followNewest(), QByteArrayList{line(2)});
}

TEST_F(LogTailTest, ReadsTruncatedLogFromStart)
{
    TestFolder::write(file(), line(1) + '\n' + line(2) + '\n' + line(3).left(20));
    EXPECT_EQ(followNewest().size(), 2);
    TestFolder::write(file(), line(4) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(4)});
    TestFolder::write(file(), "");
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file(), line(5) + '\n' + line(6) + '\n');
    EXPECT_EQ(followNewest(), (QByteArrayList{line(5), line(6)}));
}

TEST_F(LogTailTest, ReadsRecreatedLogFromStart)
{
    TestFolder::write(file(), line(1) + '\n');
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    fs::remove(file());
    EXPECT_EQ(followNewest(), QByteArrayList());
    const auto first = line(2) + '\n';
    TestFolder::write(file(), first + QByteArray(100'000, '\n'));
    EXPECT_EQ(followNewest(OldAge), QByteArrayList{line(2)});
}

TEST_F(LogTailTest, FinishesOldLogBeforeReadingItsReplacement)
{
    TestFolder::write(file(), line(1) + '\n');
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    TestFolder::append(file(), line(2) + '\n' + line(3).left(20));
    TestFolder::write(file("new"), line(4) + '\n' + QByteArray(100'000, '\n'));
    fs::rename(file("new"), file());
    EXPECT_EQ(followNewest(OldAge), (QByteArrayList{line(2), line(4)}));
}

TEST_F(LogTailTest, ReplacementWithSameBeginningIsNotReadAgain)
{
    TestFolder::write(file(), line(1) + '\n' + line(2) + '\n');
    EXPECT_EQ(followNewest().size(), 2);
    replace(line(1) + '\n' + line(2) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file(), line(3) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(3)});
    replace(line(1) + '\n' + line(2) + '\n' + line(3) + '\n' + line(4) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(4)});
}

TEST_F(LogTailTest, ReplacementIsReadFromFirstLineThatDiffers)
{
    const auto first = line(1) + '\n' + QByteArray(300'000, '\n');
    TestFolder::write(file(), first + line(2) + '\n' + line(3) + '\n');
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    replace(first + line(20) + '\n' + line(3) + '\n');
    EXPECT_EQ(followNewest(), (QByteArrayList{line(20), line(3)}));
}

TEST_F(LogTailTest, ShortenedReplacementContinuesWithNewLines)
{
    TestFolder::write(file(), line(1) + '\n' + line(2) + '\n' + line(3) + '\n');
    EXPECT_EQ(followNewest().size(), 3);
    replace(line(1) + '\n' + line(2) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file(), line(4) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(4)});
}

TEST_F(LogTailTest, ReplacementCompletesLastLine)
{
    TestFolder::write(file(), line(1) + '\n' + line(2).left(20));
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
    replace(line(1) + '\n' + line(2).left(20));
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file(), line(2).mid(20) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(2)});
}

TEST_F(LogTailTest, ReplacementSeenWhileItIsSavedIsNotReadAgain)
{
    const auto content = line(1) + '\n' + QByteArray(200'000, '\n') + line(2) + '\n';
    TestFolder::write(file(), content);
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    // The editor keeps the old file as a backup until the new one is complete.
    fs::rename(file(), file("backup"));
    TestFolder::write(file(), "");
    EXPECT_EQ(followNewest(), QByteArrayList());
    for (const auto size : {10, 60, 150'000}) {
        TestFolder::append(file(), content.mid(static_cast<qsizetype>(fs::file_size(file())), size));
        EXPECT_EQ(followNewest(), QByteArrayList()) << size;
    }
    fs::remove(file("backup"));
    TestFolder::append(file(), content.mid(static_cast<qsizetype>(fs::file_size(file()))));
    EXPECT_EQ(followNewest(), QByteArrayList());
    // Saved once more before the game writes.
    replace(content.left(100'000));
    EXPECT_EQ(followNewest(), QByteArrayList());
    replace(content + line(3) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(3)});
}

TEST_F(LogTailTest, LimitsBytesPerCallInReplacement)
{
    const auto content = line(1) + '\n' + QByteArray(50'000'000, '\n');
    TestFolder::write(file(), content);
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    replace(content + line(2) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList());
    EXPECT_EQ(followNewest(), QByteArrayList{line(2)});
}

TEST_F(LogTailTest, RenamedLogContinuesAtItsOffset)
{
    TestFolder::write(file(), line(1) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
    fs::rename(file(), file("WoWCombatLog-archive.txt"));
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::append(file("WoWCombatLog-archive.txt"), line(2) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(2)});
}

TEST_F(LogTailTest, ReadsRecreatedLogFromStartAfterFollowingAnother)
{
    TestFolder::write(file("WoWCombatLog-old.txt"), line(1) + '\n');
    TestFolder::setModified(file("WoWCombatLog-old.txt"), 1000);
    TestFolder::write(file(), line(2) + '\n');
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    fs::remove(file());
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    TestFolder::write(file(), line(3) + '\n' + QByteArray(100'000, '\n'));
    EXPECT_EQ(followNewest(), QByteArrayList{line(3)});
}

TEST_F(LogTailTest, ReadsNewLogAtPathOfRenamedLogFromStart)
{
    TestFolder::write(file(), line(1) + '\n');
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    const auto archive = file("WoWCombatLog-archive.txt");
    fs::rename(file(), archive);
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    TestFolder::append(archive, line(2) + '\n');
    TestFolder::setModified(archive, 1000);
    TestFolder::write(file(), line(3) + '\n' + QByteArray(100'000, '\n'));
    EXPECT_EQ(followNewest(), (QByteArrayList{line(2), line(3)}));
    TestFolder::append(archive, line(4) + '\n');
    TestFolder::setModified(file(), 1000);
    EXPECT_EQ(followNewest(), QByteArrayList{line(4)});
}

TEST_F(LogTailTest, AlternatingLogsAreEachReadOnce)
{
    const std::array logs{file("WoWCombatLog-1.txt"), file("WoWCombatLog-2.txt")};
    double time = 1000;
    for (const auto& log : logs) {
        TestFolder::write(log, line(0) + '\n' + QByteArray(100'000, '\n'));
        TestFolder::setModified(log, ++time);
        EXPECT_EQ(followNewest(), QByteArrayList());
    }
    // Each line is written in two parts. Between them, the other log is written.
    for (int turn = 1; turn <= 10; ++turn) {
        const auto& log = logs[static_cast<std::size_t>(turn % 2)];
        const auto completed = turn > 2 ? line(turn - 2) : QByteArray();
        TestFolder::append(log, completed.mid(20) + (turn > 2 ? "\n" : "") + line(turn).left(20));
        TestFolder::setModified(log, ++time);
        EXPECT_EQ(followNewest(), turn > 2 ? QByteArrayList{completed} : QByteArrayList()) << turn;
    }
}

TEST_F(LogTailTest, ReadsLinesWrittenWhileAnotherLogWasNewest)
{
    const auto first = file("WoWCombatLog-1.txt");
    const auto second = file("WoWCombatLog-2.txt");
    TestFolder::write(first, "");
    EXPECT_EQ(followNewest(), QByteArrayList());
    TestFolder::setModified(first, 1000);
    TestFolder::write(second, line(1) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
    TestFolder::append(first, line(2) + '\n');
    TestFolder::setModified(first, 1000);
    EXPECT_EQ(followNewest(), QByteArrayList());
    // Its last lines are read although it is deleted.
    fs::remove(first);
    EXPECT_EQ(followNewest(), QByteArrayList{line(2)});
    EXPECT_EQ(followNewest(), QByteArrayList());
}

TEST_F(LogTailTest, ForgetsLeastRecentlyFollowedLogWithoutReadingItAgain)
{
    const auto name = [this](int number) { return file("WoWCombatLog-" + std::to_string(number) + ".txt"); };
    const auto count = static_cast<int>(LogTail::MaxKnownLogs) + 1;
    for (int i = 0; i < count; ++i) {
        TestFolder::write(name(i), line(i) + '\n');
        TestFolder::setModified(name(i), 1000 + i);
        EXPECT_EQ(followNewest(), QByteArrayList{line(i)});
    }
    for (const auto number : {1, 0}) {
        TestFolder::append(name(number), line(100 + number) + '\n');
        EXPECT_EQ(followNewest(OldAge), number == 1 ? QByteArrayList{line(101)} : QByteArrayList());
        TestFolder::setModified(name(number), 1000);
    }
}

TEST_F(LogTailTest, CloseForgetsPaths)
{
    TestFolder::write(file(), line(1) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
    tail.close();
    TestFolder::write(file("new"), line(2) + '\n');
    fs::rename(file("new"), file());
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
}

TEST_F(LogTailTest, FinishesOldLogBeforeSwitchingToNewerLog)
{
    TestFolder::write(file("WoWCombatLog-1.txt"), line(1) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
    TestFolder::append(file("WoWCombatLog-1.txt"), line(2) + '\n');
    TestFolder::setModified(file("WoWCombatLog-1.txt"), 1000);
    TestFolder::write(file("WoWCombatLog-2.txt"), line(3) + '\n');
    EXPECT_EQ(followNewest(), (QByteArrayList{line(2), line(3)}));
    TestFolder::append(file("WoWCombatLog-2.txt"), line(4) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(4)});
}

TEST_F(LogTailTest, ReadsNewerButOldLogFromEnd)
{
    TestFolder::write(file("WoWCombatLog-1.txt"), line(1) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
    TestFolder::setModified(file("WoWCombatLog-1.txt"), 1000);
    TestFolder::write(file("WoWCombatLog-2.txt"), line(3) + '\n');
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    TestFolder::setModified(file("WoWCombatLog-2.txt"), 900);
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    TestFolder::append(file("WoWCombatLog-1.txt"), line(2) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(2)});
}

TEST_F(LogTailTest, LimitsBytesPerCallWithoutLosingLines)
{
    TestFolder::write(file(), "");
    EXPECT_EQ(followNewest(), QByteArrayList());
    QByteArray log;
    while (log.size() < 40'000'000) {
        log += line(1) + '\n' + QByteArray(1'000'000, '\n');
    }
    TestFolder::append(file(), log + line(2) + '\n');
    const auto first = followNewest();
    EXPECT_EQ(first.size(), log.left(33'554'432).count("UNIT_DIED"));
    const auto second = followNewest();
    EXPECT_EQ(first.size() + second.size(), log.count("UNIT_DIED") + 1);
    EXPECT_EQ(second.last(), line(2));
    EXPECT_EQ(followNewest(), QByteArrayList());
}

TEST_F(LogTailTest, SkipsLinesWrittenWhileClosed)
{
    TestFolder::write(file(), line(1) + '\n');
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    tail.close();
    TestFolder::append(file(), line(2) + '\n');
    EXPECT_EQ(followNewest(OldAge), QByteArrayList());
    TestFolder::append(file(), line(3) + '\n');
    EXPECT_EQ(followNewest(), QByteArrayList{line(3)});
}

TEST_F(LogTailTest, IgnoresFileThatReplacedLogBeforeOpening)
{
    TestFolder::write(file(), line(1) + '\n');
    const auto found = newestLog({folder.path()});
    fs::rename(file(), file("kept"));
    ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
    tail.follow(*found, RecentAge);
    EXPECT_EQ(followNewest(), QByteArrayList());
    fs::remove(file());
    tail.follow(*found, RecentAge);
    fs::rename(file("kept"), file());
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
}

TEST_F(LogTailTest, RetriesUnreadableLog)
{
    TestFolder::write(file(), line(1) + '\n');
    fs::permissions(fs::path(file()).parent_path(), fs::perms::all);
    fs::permissions(file(), fs::perms::none);
    {
        const test::UnprivilegedUser user;
        ASSERT_TRUE(newestLog({folder.path()})) << "the log must exist";
        EXPECT_EQ(followNewest(), QByteArrayList());
    }
    fs::permissions(file(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
    EXPECT_EQ(followNewest(), QByteArrayList{line(1)});
}

} // namespace
} // namespace quelto
