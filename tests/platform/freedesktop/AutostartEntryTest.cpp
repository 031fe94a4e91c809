// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/AutostartEntry.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

const QByteArray Program = "/bin/sh";

bool isEnabled(const QByteArray& contents)
{
    return AutostartEntry(contents, {"KDE", "GNOME"}).isEnabled();
}

QByteArray enabled(const QByteArray& contents)
{
    return AutostartEntry(contents, {"KDE", "GNOME"}).enabled(Program);
}

QByteArray entry(const QByteArray& lines)
{
    return "[Desktop Entry]\nType=Application\nName=Quelto\nExec=/bin/sh\n" + lines;
}

TEST(AutostartEntryTest, ReadsAsTheDesktopDoes)
{
    for (const QByteArray lines :
         {"", "Hidden=false\n", "X-GNOME-Autostart-enabled=true\n", "OnlyShowIn=XFCE;GNOME;\n", "NotShowIn=XFCE;\n",
          "TryExec=sh\n", "Exec=sh -c 'exit 1'\n", "Exec=\"/bin/sh\" --flag %u\n", "Hidden=maybe\n", "# comment\n"}) {
        EXPECT_TRUE(isEnabled(entry(lines))) << lines.constData();
    }
    for (const QByteArray lines :
         {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n", "X-MATE-Autostart-enabled=false\n",
          "OnlyShowIn=XFCE;\n", "OnlyShowIn=\n", "NotShowIn=GNOME;XFCE\n", "TryExec=/no/program\n", "Exec=\n",
          "Exec=/no/program\n", "Exec=\"/bin/sh\n", "Type=Link\n"}) {
        EXPECT_FALSE(isEnabled(entry(lines))) << lines.constData();
    }
    for (const QByteArray contents :
         {"", "Type=Application\nExec=/bin/sh\n", "[Other]\nType=Application\nExec=/bin/sh\n", "\xff\xfe\0x",
          "[Desktop Entry]\nExec=/bin/sh\n"}) {
        EXPECT_FALSE(isEnabled(contents)) << contents.constData();
    }
}

TEST(AutostartEntryTest, SwitchingOnMendsWhatSwitchedItOff)
{
    for (const QByteArray lines :
         {"", "Hidden=true\n", "X-GNOME-Autostart-enabled=false\nX-MATE-Autostart-enabled=false\n",
          "OnlyShowIn=XFCE;\n", "NotShowIn=GNOME;\n", "TryExec=/no/program\n", "Exec=/no/program\n", "Type=Link\n"}) {
        EXPECT_TRUE(isEnabled(enabled(entry(lines)))) << lines.constData();
        EXPECT_FALSE(isEnabled(AutostartEntry(enabled(entry(lines)), {}).disabled())) << lines.constData();
    }
    for (const QByteArray contents : {"", "garbage", "[Other]\nkey=value\n", "\xff\xfe"}) {
        EXPECT_TRUE(isEnabled(enabled(contents))) << contents.constData();
    }
}

TEST(AutostartEntryTest, KeepsWhatTheUserWrote)
{
    const QByteArray before = "[Desktop Entry]\n# mine\nType=Application\nName=My recorder\nName[de]=Meins\n"
                              "Exec=/old/quelto --flag\nX-GNOME-Autostart-Delay=20\nOnlyShowIn=KDE;XFCE;\n\n[Other]\n"
                              "key=value\n";
    const QByteArray after = QByteArray(before).replace("/old/quelto --flag", Program);
    EXPECT_EQ(enabled(before), after);
    const AutostartEntry off(AutostartEntry(after, {"KDE"}).disabled(), {"KDE"});
    EXPECT_FALSE(off.isEnabled());
    EXPECT_EQ(off.enabled(Program), after);
}

TEST(AutostartEntryTest, KeepsACommandThatStartsTheProgram)
{
    for (const QByteArray command :
         {"/bin/sh", "/bin/sh --flag", "\"/bin/sh\" --quiet %u", "sh --flag", "/bin/../bin/sh --flag",
          "env LANG=de /bin/sh --flag", "/usr/bin/env A=1 B=2 sh", "/usr/bin/env /bin/sh"}) {
        const QByteArray before = "[Desktop Entry]\nType=Application\nName=Quelto\nExec=" + command + "\n";
        EXPECT_EQ(enabled(before + "Hidden=true\n"), before);
    }
    for (const QByteArray command :
         {"/bin/cat --flag", "/bin/sh 'unfinished", "env LANG=de", "env", "", "/bin", "env A=1 /bin/cat /bin/sh"}) {
        const QByteArray before = "[Desktop Entry]\nType=Application\nName=Quelto\nExec=" + command + "\n";
        EXPECT_EQ(enabled(before), entry({})) << command.constData();
    }
}

TEST(AutostartEntryTest, TellsWhichContentsItCannotKeep)
{
    const auto isDamaged = [](const QByteArray& contents) { return AutostartEntry(contents, {}).isDamaged(); };
    for (const QByteArray contents : {"", "\n", "# a comment\n", "[Desktop Entry]\n", "[Other]\nkey=value\n"}) {
        EXPECT_FALSE(isDamaged(contents)) << contents.constData();
    }
    EXPECT_FALSE(isDamaged(entry("Exec=\"/bin/sh\nHidden=maybe\nX-Mine=\xff\n")));
    for (const QByteArray contents : {"garbage", "key=value\n", "\xff\xfe", "\xef\xbb\xbf[Desktop Entry]garbage\n"}) {
        EXPECT_TRUE(isDamaged(contents)) << contents.constData();
    }
    EXPECT_TRUE(isDamaged(entry("no key\nX-Mine=1\n")));
    EXPECT_TRUE(isDamaged(entry("Encoding=Latin-9\n")));
    EXPECT_TRUE(isDamaged(entry(QByteArray("X-Mine=a\0b\n", 11))));
    EXPECT_TRUE(isDamaged(QByteArray(1, '\0')));
}

TEST(AutostartEntryTest, QuotesTheProgram)
{
    const auto command = [](const char* program) { return AutostartEntry::commandFor(program).toStdString(); };
    EXPECT_EQ(command("/usr/bin/quelto"), "/usr/bin/quelto");
    EXPECT_EQ(command("/opt/a b/quelto"), R"("/opt/a b/quelto")");
    EXPECT_EQ(command("/opt/50%/quelto"), "/usr/bin/env /opt/50%%/quelto");
    EXPECT_EQ(command("/opt/\"$`\\%/q"), R"(/usr/bin/env "/opt/\"\$\`\\%%/q")");
    EXPECT_EQ(command("/opt/ö(1)/q"), "\"/opt/ö(1)/q\"");
}

TEST(AutostartEntryTest, EscapesTheCommandInTheFile)
{
    const auto contents = AutostartEntry({}, {}).enabled("/opt/a\\b\nc/q");
    EXPECT_TRUE(contents.contains(R"(Exec="/opt/a\\\\b\nc/q")"
                                  "\n"))
        << contents.constData();
}

} // namespace
} // namespace quelto
