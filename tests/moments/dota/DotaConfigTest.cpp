// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaConfig.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace quelto {
namespace {

using InstallResult = DotaConfig::InstallResult;
using InstallState = DotaConfig::InstallState;

const QByteArray ConfigText = "\"Quelto\"\n"
                              "{\n"
                              "    \"uri\"           \"http://127.0.0.1:37231/\"\n"
                              "    \"timeout\"       \"5.0\"\n"
                              "    \"buffer\"        \"0.1\"\n"
                              "    \"throttle\"      \"0.1\"\n"
                              "    \"heartbeat\"     \"10.0\"\n"
                              "    \"data\"\n"
                              "    {\n"
                              "        \"provider\"      \"1\"\n"
                              "        \"map\"           \"1\"\n"
                              "        \"player\"        \"1\"\n"
                              "        \"hero\"          \"1\"\n"
                              "        \"items\"         \"1\"\n"
                              "    }\n"
                              "}\n";

const char* const Native = ".local/share/Steam";
const char* const Flatpak = ".var/app/com.valvesoftware.Steam/.local/share/Steam";

class DotaConfigTest : public testing::Test {
protected:
    /// Returns the "cfg" folder.
    QString makeGame(const char* library) const
    {
        const auto game = gameIn(library);
        EXPECT_TRUE(QDir().mkpath(game + QStringLiteral("/bin")) && QDir().mkpath(game + QStringLiteral("/dota/cfg")));
        return QFileInfo(game + QStringLiteral("/dota/cfg")).canonicalFilePath();
    }
    QString gameIn(const char* library) const
    {
        return home() + u'/' + QString::fromUtf8(library) + QStringLiteral("/steamapps/common/dota 2 beta/game");
    }
    QString home() const { return m_home.path(); }
    static QString fileIn(const QString& cfg)
    {
        return cfg + QStringLiteral("/gamestate_integration/gamestate_integration_quelto.cfg");
    }
    static QByteArray content(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir m_home;
    const DotaConfig m_config{m_home.path(), 37231};
};

TEST_F(DotaConfigTest, WritesFormatOfGame)
{
    EXPECT_EQ(m_config.configText().toUtf8(), ConfigText);
    EXPECT_TRUE(DotaConfig(home(), 4).configText().contains(QStringLiteral("http://127.0.0.1:4/\"")));
}

TEST_F(DotaConfigTest, NotFoundWithoutGame)
{
    EXPECT_EQ(m_config.installState(), InstallState::NotFound);
    EXPECT_EQ(m_config.install(), InstallResult());
    QDir().mkpath(home() + u'/' + QString::fromUtf8(Native) + QStringLiteral("/steamapps"));
    EXPECT_EQ(m_config.installState(), InstallState::NotFound);
    EXPECT_EQ(m_config.install(), InstallResult());
}

TEST_F(DotaConfigTest, NeedsBinFolderBesideCfgFolder)
{
    QDir().mkpath(gameIn(Native) + QStringLiteral("/dota/cfg"));
    EXPECT_EQ(m_config.installState(), InstallState::NotFound);
    QDir().mkpath(gameIn(Flatpak) + QStringLiteral("/bin"));
    EXPECT_EQ(m_config.installState(), InstallState::NotFound);
}

TEST_F(DotaConfigTest, InstallsIntoEveryGame)
{
    const auto native = makeGame(Native);
    const auto flatpak = makeGame(Flatpak);
    EXPECT_EQ(m_config.cfgFolders(), (QStringList{native, flatpak}));
    EXPECT_EQ(m_config.installState(), InstallState::NotInstalled);
    EXPECT_EQ(m_config.install(), (InstallResult{.written = 2, .failed = 0}));
    EXPECT_EQ(m_config.installState(), InstallState::Installed);
    EXPECT_EQ(content(fileIn(native)), ConfigText);
    EXPECT_EQ(content(fileIn(flatpak)), ConfigText);
}

TEST_F(DotaConfigTest, GameLinkedFromTwoLibrariesCountsOnce)
{
    const auto native = makeGame(Native);
    const auto link = home() + u'/' + QString::fromUtf8(Flatpak) + QStringLiteral("/steamapps/common");
    QDir().mkpath(link);
    ASSERT_TRUE(QFile::link(QFileInfo(gameIn(Native)).path(), link + QStringLiteral("/dota 2 beta")));
    EXPECT_EQ(m_config.cfgFolders(), QStringList{native});
}

TEST_F(DotaConfigTest, NotInstalledIfOneByteDiffers)
{
    const auto native = makeGame(Native);
    makeGame(Flatpak);
    m_config.install();
    ASSERT_EQ(m_config.installState(), InstallState::Installed);
    for (const auto& other : {ConfigText.chopped(1), ConfigText + '\n', QByteArray(ConfigText).replace("0.1", "0.2"),
                              QByteArray(), "\xef\xbb\xbf" + ConfigText}) {
        write(fileIn(native), other);
        EXPECT_EQ(m_config.installState(), InstallState::NotInstalled);
    }
    EXPECT_EQ(m_config.install(), (InstallResult{.written = 2, .failed = 0}));
    EXPECT_EQ(m_config.installState(), InstallState::Installed);
}

TEST_F(DotaConfigTest, SkipsFolderThatCannotBeWritten)
{
    const auto native = makeGame(Native);
    const auto flatpak = makeGame(Flatpak);
    // A file blocks the subfolder. Permissions would not work, because root can write everywhere.
    write(native + QStringLiteral("/gamestate_integration"), "in the way");
    EXPECT_EQ(m_config.install(), (InstallResult{.written = 1, .failed = 1}));
    EXPECT_EQ(content(fileIn(flatpak)), ConfigText);
    EXPECT_EQ(m_config.installState(), InstallState::NotInstalled);
    EXPECT_EQ(content(native + QStringLiteral("/gamestate_integration")), "in the way");
}

TEST_F(DotaConfigTest, LeavesOtherFilesInFolderAlone)
{
    const auto native = makeGame(Native);
    QDir().mkpath(native + QStringLiteral("/gamestate_integration"));
    const auto other = native + QStringLiteral("/gamestate_integration/gamestate_integration_other.cfg");
    write(other, "another program's");
    EXPECT_EQ(m_config.install(), (InstallResult{.written = 1, .failed = 0}));
    EXPECT_EQ(content(other), "another program's");
    EXPECT_EQ(QDir(native + QStringLiteral("/gamestate_integration")).entryList(QDir::Files | QDir::Hidden).size(), 2);
    EXPECT_EQ(QDir(native).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).size(), 1);
}

} // namespace
} // namespace quelto
