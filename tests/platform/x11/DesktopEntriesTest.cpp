// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/DesktopEntries.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

constexpr const char* Calculator = "[Desktop Entry]\n"
                                   "Type=Application\n"
                                   "Name=Calculator\n"
                                   "Name[tr]=Hesap Makinesi\n"
                                   "Name[pt]=Calculadora\n"
                                   "Name[pt_BR]=Calculadora brasileira\n"
                                   "StartupWMClass=Calc\\sWindow\n"
                                   "[Desktop Action new]\n"
                                   "Name=New window\n"
                                   "Name[tr]=Yeni pencere\n";

QString nameIn(const QStringList& languages)
{
    return parseDesktopEntry(QStringLiteral("calc"), Calculator, languages).value().name;
}

TEST(DesktopEntries, TakeTheBestLanguage)
{
    EXPECT_EQ(nameIn({}), u"Calculator");
    EXPECT_EQ(nameIn({QStringLiteral("tr_TR"), QStringLiteral("tr")}), u"Hesap Makinesi");
    EXPECT_EQ(nameIn({QStringLiteral("pt_BR"), QStringLiteral("pt")}), u"Calculadora brasileira");
    EXPECT_EQ(nameIn({QStringLiteral("de_DE"), QStringLiteral("de")}), u"Calculator");
}

TEST(DesktopEntries, UnescapeTheWindowClass)
{
    EXPECT_EQ(parseDesktopEntry(QStringLiteral("calc"), Calculator, {})->windowClass, u"Calc Window");
}

TEST(DesktopEntries, PassOverWhatIsHiddenOrNoApplication)
{
    EXPECT_FALSE(
        parseDesktopEntry(QStringLiteral("a"), "[Desktop Entry]\nType=Application\nName=A\nHidden=true\n", {}));
    EXPECT_FALSE(parseDesktopEntry(QStringLiteral("a"), "[Desktop Entry]\nType=Link\nName=A\n", {}));
    EXPECT_FALSE(parseDesktopEntry(QStringLiteral("a"), "[Desktop Entry]\nType=Application\n", {}));
    EXPECT_FALSE(parseDesktopEntry(QStringLiteral("a"), "Name=A\nType=Application\n", {}));
    EXPECT_FALSE(parseDesktopEntry(QStringLiteral("a"), "", {}));
}

struct LanguageCase {
    const char* variable;
    const char* expected;
};

TEST(DesktopEntries, ReadTheEnvironmentsLanguage)
{
    for (const auto& [variable, expected] : {LanguageCase{"tr_TR.UTF-8", "tr_TR tr"},
                                             {"sr_RS.UTF-8@latin", "sr_RS@latin sr_RS sr@latin sr"},
                                             {"de", "de"},
                                             {"C.UTF-8", ""},
                                             {"POSIX", ""}}) {
        qputenv("LC_ALL", variable);
        EXPECT_EQ(desktopEntryLanguages().join(u' '), QString::fromUtf8(expected)) << variable;
    }
    qunsetenv("LC_ALL");
}

class InstalledEntries : public testing::Test {
protected:
    InstalledEntries()
    {
        m_before = {qgetenv("XDG_DATA_HOME"), qgetenv("XDG_DATA_DIRS")};
        qputenv("XDG_DATA_HOME", m_home.path().toUtf8());
        qputenv("XDG_DATA_DIRS", m_system.path().toUtf8());
        qputenv("LC_ALL", "C");
    }
    ~InstalledEntries() override
    {
        qputenv("XDG_DATA_HOME", m_before[0]);
        qputenv("XDG_DATA_DIRS", m_before[1]);
        qunsetenv("LC_ALL");
    }

    static void install(const QTemporaryDir& root, const char* file, const char* name, const char* windowClass = "")
    {
        const auto path = root.filePath(QStringLiteral("applications/") + QString::fromUtf8(file));
        QDir().mkpath(QFileInfo(path).path());
        QFile entry(path);
        ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
        entry.write(QByteArray("[Desktop Entry]\nType=Application\nName=") + name + "\nStartupWMClass=" + windowClass);
    }
    QString nameFor(const char* windowName)
    {
        const auto entry = m_entries.find({QString::fromUtf8(windowName)});
        return entry ? entry->name : QStringLiteral("none");
    }

    QTemporaryDir m_home;
    QTemporaryDir m_system;
    DesktopEntries m_entries;

private:
    std::array<QByteArray, 2> m_before;
};

TEST_F(InstalledEntries, AreReadAgainWhenOneIsInstalledOrRemoved)
{
    install(m_system, "games/shooter.desktop", "Shooter");
    EXPECT_EQ(nameFor("games-shooter"), QStringLiteral("Shooter"));
    install(m_system, "games/racer.desktop", "Racer");
    EXPECT_EQ(nameFor("games-racer"), QStringLiteral("Racer"));
    QFile::remove(m_system.filePath(QStringLiteral("applications/games/shooter.desktop")));
    EXPECT_EQ(nameFor("games-shooter"), QStringLiteral("none"));
}

TEST_F(InstalledEntries, AreFoundByWindowClassThenByFileName)
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

TEST_F(InstalledEntries, OfTheUserHideThoseOfTheSystem)
{
    install(m_system, "game.desktop", "System");
    install(m_home, "game.desktop", "User");
    EXPECT_EQ(nameFor("game"), u"User");
}

} // namespace
} // namespace quelto
