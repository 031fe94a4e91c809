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
    void link(const char* target, const char* name) const
    {
        QDir().mkpath(QFileInfo(at(name)).path());
        EXPECT_TRUE(QFile::link(at(target), at(name)));
    }
    void list(const char* steamFolder, const QStringList& paths, const QByteArray& before = {}) const
    {
        makeFolder((QByteArray(steamFolder) + "/steamapps").constData());
        QFile file(at(steamFolder) + QStringLiteral("/steamapps/libraryfolders.vdf"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(before + "\"libraryfolders\"\n{\n");
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

TEST_F(SteamLibraries, AreNoneWithoutSteam)
{
    EXPECT_TRUE(steamLibraries(home()).isEmpty());
    EXPECT_TRUE(steamLibraries(home() + QStringLiteral("/nothing here")).isEmpty());
}

TEST_F(SteamLibraries, AreTheSteamFolderAloneWithoutAList)
{
    const auto steam = makeFolder(".local/share/Steam");
    EXPECT_EQ(steamLibraries(home()), QStringList{steam});
}

TEST_F(SteamLibraries, ComeInTheOrderOfTheListBehindTheSteamFolder)
{
    const auto steam = makeFolder(".local/share/Steam");
    const auto second = makeFolder("mnt/Zweite Platte/Steam Oyunları");
    const auto first = makeFolder("mnt/a");
    list(".local/share/Steam", {steam, second, first, second});
    EXPECT_EQ(steamLibraries(home()), (QStringList{steam, second, first}));
}

TEST_F(SteamLibraries, AreCountedOnceHoweverManyLinksLeadThere)
{
    const auto steam = makeFolder(".local/share/Steam");
    link(".local/share/Steam", ".steam/steam");
    link(".steam/steam", ".steam/root");
    link(".local/share/Steam", ".steam/debian-installation");
    const auto library = makeFolder("games");
    link("games", "games too");
    list(".local/share/Steam", {at("games too"), library, at(".steam/root")});
    EXPECT_EQ(steamLibraries(home()), (QStringList{steam, library}));
}

TEST_F(SteamLibraries, AreFoundForEveryWayOfPackaging)
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

TEST_F(SteamLibraries, OfSeveralSteamsAreAllListed)
{
    const auto native = makeFolder(".local/share/Steam");
    const auto flatpak = makeFolder(".var/app/com.valvesoftware.Steam/.local/share/Steam");
    const auto mine = makeFolder("mine");
    const auto shared = makeFolder("shared");
    list(".local/share/Steam", {native, shared});
    list(".var/app/com.valvesoftware.Steam/.local/share/Steam", {flatpak, shared, mine});
    EXPECT_EQ(steamLibraries(home()), (QStringList{native, shared, flatpak, mine}));
}

TEST_F(SteamLibraries, WhoseFoldersAreNotThereAreLeftOut)
{
    const auto steam = makeFolder(".local/share/Steam");
    QFile file(at("a file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    list(".local/share/Steam", {at("unplugged"), at("a file"), QStringLiteral("."), QStringLiteral("relative")});
    EXPECT_EQ(steamLibraries(home()), QStringList{steam});
}

TEST_F(SteamLibraries, MayHaveBackslashesInTheirNames)
{
    const auto steam = makeFolder(".local/share/Steam");
    const auto odd = makeFolder("back\\slash");
    list(".local/share/Steam", {odd});
    EXPECT_EQ(steamLibraries(home()), (QStringList{steam, odd}));
}

TEST_F(SteamLibraries, SurviveBytesThatAreNoText)
{
    const auto steam = makeFolder(".local/share/Steam");
    const auto library = makeFolder("games");
    list(".local/share/Steam", {library}, QByteArray("\xff\xfe\0\xc3\"path\" \"\"\n", 14));
    EXPECT_EQ(steamLibraries(home()), (QStringList{steam, library}));
}

TEST_F(SteamLibraries, AreNotWaitedForWhereTheListIsAPipe)
{
    const auto steam = makeFolder(".local/share/Steam");
    makeFolder(".local/share/Steam/steamapps");
    ASSERT_EQ(mkfifo(at(".local/share/Steam/steamapps/libraryfolders.vdf").toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(steamLibraries(home()), QStringList{steam});
}

} // namespace
} // namespace quelto
