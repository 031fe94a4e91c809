// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogFolders.h"

#include "tests/moments/wow/TestFolder.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

namespace fs = std::filesystem;

using Paths = std::vector<fs::path>;

class LogFoldersTest : public testing::Test {
protected:
    fs::path makeGame() const { return home.makeFolder(".wine/drive_c/Program Files (x86)/World of Warcraft"); }

    TestFolder home;
    LogFolders folders{home.path()};
};

TEST_F(LogFoldersTest, ListsFlavoursInOrder)
{
    const auto game = makeGame();
    Paths expected;
    for (const auto* flavour : {"_retail_", "_classic_", "_classic_era_", "_anniversary_", "_ptr_", "_beta_"}) {
        fs::create_directories(game / flavour / "Logs");
        expected.push_back(game / flavour / "Logs");
    }
    fs::create_directories(game / "_other_" / "Logs");
    EXPECT_EQ(folders.existing(0), expected);
}

TEST_F(LogFoldersTest, ListsExistingFoldersOnly)
{
    const auto game = makeGame();
    fs::create_directories(game / "_retail_");
    TestFolder::write(game / "_retail_" / "Logs", "a file");
    fs::create_directories(game / "_classic_" / "logs");
    fs::create_directories(game / "_ptr_");
    fs::create_symlink("nowhere", game / "_ptr_" / "Logs");
    EXPECT_EQ(folders.existing(0), Paths());
}

TEST_F(LogFoldersTest, LinkedFolderIsListedOnce)
{
    const auto game = makeGame();
    fs::create_directories(game / "_retail_" / "Logs");
    fs::create_directory_symlink("_retail_", game / "_classic_");
    EXPECT_EQ(folders.existing(0), Paths{game / "_retail_" / "Logs"});
}

TEST_F(LogFoldersTest, SearchesPrefixesEvery30SecondsAndFoldersOnEachCall)
{
    EXPECT_EQ(folders.existing(100), Paths());
    const auto game = makeGame();
    const auto logs = game / "_retail_" / "Logs";
    fs::create_directories(logs);
    EXPECT_EQ(folders.existing(129.9), Paths());
    EXPECT_EQ(folders.existing(130), Paths{logs});
    fs::create_directories(game / "_beta_" / "Logs");
    EXPECT_EQ(folders.existing(131), (Paths{logs, game / "_beta_" / "Logs"}));
    fs::remove_all(logs);
    EXPECT_EQ(folders.existing(132), Paths{game / "_beta_" / "Logs"});
    fs::remove_all(game);
    EXPECT_EQ(folders.existing(133), Paths());
}

class NewestLog : public testing::Test {
protected:
    fs::path make(const fs::path& name, double modified) const
    {
        auto file = folder.path() / name;
        TestFolder::write(file, "x");
        TestFolder::setModified(file, modified);
        return file;
    }

    fs::path newest() const
    {
        const auto log = newestLog({folder.path()});
        return log ? log->path : fs::path();
    }

    TestFolder folder;
};

TEST_F(NewestLog, IsLastWrittenLogOfAllFolders)
{
    const TestFolder other;
    make("WoWCombatLog.txt", 1000);
    TestFolder::write(other.path() / "WoWCombatLog-012724_000658.txt", "12345");
    TestFolder::setModified(other.path() / "WoWCombatLog-012724_000658.txt", 1000.25);
    make("WoWCombatLog-older.txt", 999);
    const auto log = newestLog({folder.path(), other.path(), "/nowhere"});
    ASSERT_TRUE(log);
    EXPECT_EQ(log->path, other.path() / "WoWCombatLog-012724_000658.txt");
    EXPECT_EQ(log->size, 5);
    EXPECT_DOUBLE_EQ(log->modified, 1000.25);
}

TEST_F(NewestLog, IgnoresOtherNames)
{
    for (const auto* name : {"WoWCombatLog.txt.bak", "WoWCombatLog", "wowcombatlog.txt", "xWoWCombatLog.txt",
                             "WoWCombatLog.TXT", "Client.log", "WoWCombatLogtxt"}) {
        make(name, 2000);
    }
    EXPECT_EQ(newest(), fs::path());
    const auto log = make("WoWCombatLogs of mine.old.txt", 1000);
    EXPECT_EQ(newest(), log);
}

TEST_F(NewestLog, IgnoresEverythingButFiles)
{
    const auto log = make("WoWCombatLog-1.txt", 1000);
    fs::create_directory(folder.path() / "WoWCombatLog.txt");
    ASSERT_EQ(::mkfifo((folder.path() / "WoWCombatLog-2.txt").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder.path() / "WoWCombatLog-3.txt");
    fs::create_symlink("/dev/zero", folder.path() / "WoWCombatLog-4.txt");
    fs::create_symlink("WoWCombatLog-5.txt", folder.path() / "WoWCombatLog-5.txt");
    EXPECT_EQ(newest(), log);
}

TEST_F(NewestLog, MayBeSymbolicLink)
{
    const TestFolder other;
    TestFolder::write(other.path() / "log", "x");
    fs::create_symlink(other.path() / "log", folder.path() / "WoWCombatLog.txt");
    EXPECT_EQ(newest(), folder.path() / "WoWCombatLog.txt");
}

} // namespace
} // namespace quelto
