// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WinePrefixes.h"

#include "tests/moments/wow/TestFolder.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

namespace fs = std::filesystem;

using Paths = std::vector<fs::path>;

class WinePrefixes : public testing::Test {
protected:
    Paths found() const { return gameFoldersInPrefixes(home.path()); }

    TestFolder home;
};

TEST_F(WinePrefixes, EmptyWithoutPrefixes)
{
    EXPECT_EQ(found(), Paths());
    EXPECT_EQ(gameFoldersInPrefixes("/nowhere/at/all"), Paths());
}

TEST_F(WinePrefixes, SearchesPrefixesOfAllTools)
{
    const char* const drives[]{
        ".wine/drive_c",
        ".local/share/wineprefixes/game/drive_c",
        ".local/share/bottles/bottles/Game/drive_c",
        ".var/app/com.usebottles.bottles/data/bottles/bottles/Game/drive_c",
        "Games/battle/drive_c",
        "Games/deeper/game/drive_c",
        "Games/deeper/proton/pfx/drive_c",
        "Faugus/battle/drive_c",
        "Faugus/default/battle/drive_c",
        ".local/share/Steam/steamapps/compatdata/3012345678/pfx/drive_c",
    };
    for (const auto* drive : drives) {
        const auto game = home.makeFolder(fs::path(drive) / "Program Files (x86)" / "World of Warcraft");
        EXPECT_EQ(found(), Paths{game}) << drive;
        fs::remove_all(game);
        EXPECT_EQ(found(), Paths()) << drive;
    }
}

TEST_F(WinePrefixes, SearchesThreeLocationsInOrder)
{
    const auto onDrive = home.makeFolder(".wine/drive_c/World of Warcraft");
    const auto native = home.makeFolder(".wine/drive_c/Program Files/World of Warcraft");
    const auto old = home.makeFolder(".wine/drive_c/Program Files (x86)/World of Warcraft");
    home.makeFolder(".wine/drive_c/Games/World of Warcraft");
    EXPECT_EQ(found(), (Paths{old, native, onDrive}));
}

TEST_F(WinePrefixes, LinkedFolderIsListedOnce)
{
    const auto game = home.makeFolder("disk/World of Warcraft");
    for (const auto* drive : {".wine/drive_c", "Games/a/drive_c", "Games/b/drive_c"}) {
        fs::create_directory_symlink(game, home.makeFolder(drive) / "World of Warcraft");
    }
    // Tools for Proton create a link "pfx" from a prefix to itself.
    fs::create_directory_symlink(".", home.path() / "Games/a/pfx");
    fs::create_directory_symlink("a", home.path() / "Games/c");
    EXPECT_EQ(found(), Paths{game});
}

TEST_F(WinePrefixes, SkipsBrokenEntries)
{
    const auto game = home.makeFolder("Games/z/drive_c/World of Warcraft");
    TestFolder::write(home.path() / "Games/file", "x");
    fs::create_symlink("nowhere", home.path() / "Games/dangling");
    fs::create_symlink("loop", home.path() / "Games/loop");
    TestFolder::write(home.makeFolder("Games/a") / "drive_c", "x");
    TestFolder::write(home.makeFolder("Games/b/drive_c") / "World of Warcraft", "x");
    fs::create_symlink("nowhere", home.path() / ".wine");
    EXPECT_EQ(found(), Paths{game});
}

} // namespace
} // namespace quelto
