// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/steam/SteamLibraries.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace quelto {
namespace {

class SteamLibraries : public testing::Test {
protected:
    QString home() const { return QFileInfo(m_folder.path()).canonicalFilePath(); }
    QString at(const char* path) const { return home() + u'/' + QString::fromUtf8(path); }
    QString makeFolder(const char* path) const
    {
        EXPECT_TRUE(QDir().mkpath(at(path)));
        return at(path);
    }
    void makeLink(const char* target, const char* name) const
    {
        QDir().mkpath(QFileInfo(at(name)).path());
        EXPECT_TRUE(QFile::link(at(target), at(name)));
    }
    void writeLibraryList(const char* steamFolder, const QStringList& paths, const QByteArray& prefix = {}) const
    {
        makeFolder((QByteArray(steamFolder) + "/steamapps").constData());
        QFile file(at(steamFolder) + QStringLiteral("/steamapps/libraryfolders.vdf"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(prefix + "\"libraryfolders\"\n{\n");
        for (int i = 0; i < paths.size(); ++i) {
            auto escaped = paths[i];
            escaped.replace(QStringLiteral("\\"), QStringLiteral("\\\\"));
            file.write(QStringLiteral("\t\"%1\"\n\t{\n\t\t\"path\"\t\t\"%2\"\n\t\t\"label\"\t\t\"\"\n"
                                      "\t\t\"apps\"\n\t\t{\n\t\t\t\"570\"\t\t\"61239402001\"\n\t\t}\n\t}\n")
                           .arg(i)
                           .arg(escaped)
                           .toUtf8());
        }
        file.write("}\n");
    }

    QTemporaryDir m_folder;
};

TEST_F(SteamLibraries, EmptyWithoutSteam)
{
    EXPECT_TRUE(steamLibraries(home()).isEmpty());
    EXPECT_TRUE(steamLibraries(home() + QStringLiteral("/nothing here")).isEmpty());
}

TEST_F(SteamLibraries, OnlySteamFolderWithoutLibraryList)
{
    const auto steam = makeFolder(".local/share/Steam");
    EXPECT_EQ(steamLibraries(home()), QStringList{steam});
}

TEST_F(SteamLibraries, FollowListOrderAfterSteamFolder)
{
    const auto steam = makeFolder(".local/share/Steam");
    const auto second = makeFolder("mnt/Zweite Platte/Steam Oyunları");
    const auto first = makeFolder("mnt/a");
    writeLibraryList(".local/share/Steam", {steam, second, first, second});
    EXPECT_EQ(steamLibraries(home()), (QStringList{steam, second, first}));
}

TEST_F(SteamLibraries, SymbolicLinksGiveNoDuplicates)
{
    const auto steam = makeFolder(".local/share/Steam");
    makeLink(".local/share/Steam", ".steam/steam");
    makeLink(".steam/steam", ".steam/root");
    makeLink(".local/share/Steam", ".steam/debian-installation");
    const auto library = makeFolder("games");
    makeLink("games", "games too");
    writeLibraryList(".local/share/Steam", {at("games too"), library, at(".steam/root")});
    EXPECT_EQ(steamLibraries(home()), (QStringList{steam, library}));
}

TEST_F(SteamLibraries, FindsEveryPackaging)
{
    for (const auto* folder :
         {".local/share/Steam", ".steam/debian-installation", ".var/app/com.valvesoftware.Steam/.local/share/Steam",
          ".var/app/com.valvesoftware.Steam/data/Steam", "snap/steam/common/.local/share/Steam"}) {
        const QTemporaryDir other;
        ASSERT_TRUE(QDir(other.path()).mkpath(QString::fromUtf8(folder)));
        const auto found = steamLibraries(other.path());
        ASSERT_EQ(found.size(), 1) << folder;
        EXPECT_TRUE(found.first().endsWith(QString::fromUtf8(folder))) << folder;
    }
}

TEST_F(SteamLibraries, ListsLibrariesOfAllInstallations)
{
    const auto native = makeFolder(".local/share/Steam");
    const auto flatpak = makeFolder(".var/app/com.valvesoftware.Steam/.local/share/Steam");
    const auto mine = makeFolder("mine");
    const auto shared = makeFolder("shared");
    writeLibraryList(".local/share/Steam", {native, shared});
    writeLibraryList(".var/app/com.valvesoftware.Steam/.local/share/Steam", {flatpak, shared, mine});
    EXPECT_EQ(steamLibraries(home()), (QStringList{native, shared, flatpak, mine}));
}

TEST_F(SteamLibraries, SkipsMissingFolders)
{
    const auto steam = makeFolder(".local/share/Steam");
    QFile file(at("a file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    writeLibraryList(".local/share/Steam",
                     {at("unplugged"), at("a file"), QStringLiteral("."), QStringLiteral("relative")});
    EXPECT_EQ(steamLibraries(home()), QStringList{steam});
}

TEST_F(SteamLibraries, UnescapesBackslashes)
{
    const auto steam = makeFolder(".local/share/Steam");
    const auto odd = makeFolder("back\\slash");
    writeLibraryList(".local/share/Steam", {odd});
    EXPECT_EQ(steamLibraries(home()), (QStringList{steam, odd}));
}

TEST_F(SteamLibraries, IgnoresInvalidUtf8)
{
    const auto steam = makeFolder(".local/share/Steam");
    const auto library = makeFolder("games");
    writeLibraryList(".local/share/Steam", {library}, QByteArray("\xff\xfe\0\xc3\"path\" \"\"\n", 14));
    EXPECT_EQ(steamLibraries(home()), (QStringList{steam, library}));
}

TEST_F(SteamLibraries, DoesNotBlockOnPipeAsLibraryList)
{
    const auto steam = makeFolder(".local/share/Steam");
    makeFolder(".local/share/Steam/steamapps");
    ASSERT_EQ(mkfifo(at(".local/share/Steam/steamapps/libraryfolders.vdf").toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(steamLibraries(home()), QStringList{steam});
}

} // namespace
} // namespace quelto
