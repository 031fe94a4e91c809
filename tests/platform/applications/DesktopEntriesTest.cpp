// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/applications/DesktopEntries.h"
#include "tests/base/environment/ScopedEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

class DesktopEntriesTest : public testing::Test {
protected:
    DesktopEntriesTest()
    {
        m_environment.set("XDG_DATA_HOME", m_home.path().toUtf8());
        m_environment.set("XDG_DATA_DIRS", m_system.path().toUtf8());
        m_environment.set("LANGUAGE", {});
        m_environment.set("LC_ALL", "C");
    }

    static void installFile(const QTemporaryDir& root, const char* file, const QByteArray& contents)
    {
        const auto path = root.filePath(QStringLiteral("applications/") + QString::fromUtf8(file));
        QDir().mkpath(QFileInfo(path).path());
        QFile entry(path);
        ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
        entry.write(contents);
    }
    static void install(const QTemporaryDir& root, const char* file, const char* name, const char* windowClass = "")
    {
        installFile(root, file,
                    QByteArray("[Desktop Entry]\nType=Application\nName=") + name + "\nStartupWMClass=" + windowClass);
    }
    QString nameFor(const char* windowName)
    {
        return m_entries.findName({QString::fromUtf8(windowName)}).value_or(QStringLiteral("none"));
    }

    QTemporaryDir m_home;
    QTemporaryDir m_system;
    test::ScopedEnvironment m_environment;
    DesktopEntries m_entries;
};

constexpr const char* Calculator = "[Desktop Entry]\n"
                                   "Type=Application\n"
                                   "Name=Calculator\n"
                                   "Name[tr]=Hesap Makinesi\n"
                                   "Name[pt]=Calculadora\n"
                                   "Name[pt_BR]=Calculadora brasileira\n"
                                   "Name[sr]=Калкулатор\n"
                                   "Name[sr@latin]=Kalkulator\n"
                                   "StartupWMClass=Calc\\sWindow\n"
                                   "Exec=/not/installed/calculator\n"
                                   "[Desktop Action new]\n"
                                   "Name=New window\n"
                                   "Name[tr]=Yeni pencere\n";

struct LanguageCase {
    const char* locale;
    const char* expected;
};

TEST_F(DesktopEntriesTest, NamesAreInTheLanguageOfTheEnvironment)
{
    installFile(m_system, "calc.desktop", Calculator);
    for (const auto& [locale, expected] : {LanguageCase{"C", "Calculator"},
                                           {"C.UTF-8", "Calculator"},
                                           {"POSIX", "Calculator"},
                                           {"tr_TR.UTF-8", "Hesap Makinesi"},
                                           {"tr", "Hesap Makinesi"},
                                           {"pt_BR.UTF-8", "Calculadora brasileira"},
                                           {"pt_PT.UTF-8", "Calculadora"},
                                           {"sr_RS.UTF-8", "Калкулатор"},
                                           {"sr_RS.UTF-8@latin", "Kalkulator"},
                                           {"de_DE.UTF-8", "Calculator"}}) {
        m_environment.set("LC_ALL", locale);
        EXPECT_EQ(DesktopEntries().findName({QStringLiteral("calc")}), QString::fromUtf8(expected)) << locale;
    }
}

TEST_F(DesktopEntriesTest, EscapesInTheWindowClassAreDecoded)
{
    installFile(m_system, "calc.desktop", Calculator);
    EXPECT_EQ(nameFor("Calc Window"), u"Calculator");
}

TEST_F(DesktopEntriesTest, NamesAreOneLine)
{
    install(m_system, "game.desktop", "The\\nLong\\tGame");
    EXPECT_EQ(nameFor("game"), u"The Long Game");
}

struct IgnoredCase {
    const char* what;
    const char* contents;
};

TEST_F(DesktopEntriesTest, HiddenEntriesAndOtherTypesAreIgnored)
{
    for (const auto& [what, contents] :
         {IgnoredCase{"hidden", "[Desktop Entry]\nType=Application\nName=A\nHidden=true\n"},
          {"another type", "[Desktop Entry]\nType=Link\nName=A\n"},
          {"no name", "[Desktop Entry]\nType=Application\n"},
          {"no group", "Name=A\nType=Application\n"},
          {"empty file", ""}}) {
        installFile(m_system, "a.desktop", contents);
        EXPECT_EQ(DesktopEntries().findName({QStringLiteral("a")}), std::nullopt) << what;
    }
}

TEST_F(DesktopEntriesTest, ChangesInSubfoldersAreNoticed)
{
    install(m_system, "games/shooter.desktop", "Shooter");
    EXPECT_EQ(nameFor("games-shooter"), QStringLiteral("Shooter"));
    install(m_system, "games/racer.desktop", "Racer");
    EXPECT_EQ(nameFor("games-racer"), QStringLiteral("Racer"));
    QFile::remove(m_system.filePath(QStringLiteral("applications/games/shooter.desktop")));
    EXPECT_EQ(nameFor("games-shooter"), QStringLiteral("none"));
}

TEST_F(DesktopEntriesTest, WindowClassWinsOverFileName)
{
    install(m_system, "shooter.desktop", "By File");
    install(m_system, "other.desktop", "By Class", "Shooter");
    install(m_system, "org.example.Puzzle.desktop", "Puzzle");
    install(m_system, "kde/thing.desktop", "Thing");
    EXPECT_EQ(nameFor("shooter"), u"By Class");
    EXPECT_EQ(nameFor("other"), u"By Class");
    EXPECT_EQ(nameFor("org.example.puzzle"), u"Puzzle");
    EXPECT_EQ(nameFor("Puzzle"), u"Puzzle");
    EXPECT_EQ(nameFor("kde-thing"), u"Thing");
    EXPECT_EQ(nameFor("unknown"), u"none");
    EXPECT_EQ(nameFor(""), u"none");
}

TEST_F(DesktopEntriesTest, UserEntriesHideSystemEntries)
{
    install(m_system, "game.desktop", "System");
    install(m_home, "game.desktop", "User");
    EXPECT_EQ(nameFor("game"), u"User");
}

} // namespace
} // namespace quelto
