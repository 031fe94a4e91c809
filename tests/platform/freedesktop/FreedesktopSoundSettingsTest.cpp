// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopSoundSettings.h"

#include "tests/base/environment/ScopedEnvironment.h"
#include "tests/moments/watcher/WaitFor.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

QString commandOn(const QString& desktop, const QStringList& installed)
{
    const auto command = soundSettingsCommand(desktop.split(u':'), [&](const QString& name) {
        return installed.contains(name) ? QStringLiteral("/bin/") + name : QString();
    });
    return command ? (QStringList(command->program) + command->arguments).join(u' ') : QString();
}

struct Choice {
    const char* name;
    const char* desktop;
    const char* installed;
    const char* command;
};

class SoundSettingsChoiceTest : public testing::TestWithParam<Choice> { };

TEST_P(SoundSettingsChoiceTest, PrefersTheDesktopsOwnProgram)
{
    EXPECT_EQ(commandOn(QLatin1String(GetParam().desktop), QString::fromLatin1(GetParam().installed).split(u' ')),
              QLatin1String(GetParam().command));
}

INSTANTIATE_TEST_SUITE_P(
    Desktops, SoundSettingsChoiceTest,
    testing::Values(Choice{"Gnome", "GNOME", "pavucontrol gnome-control-center", "/bin/gnome-control-center sound"},
                    Choice{"Ubuntu", "ubuntu:GNOME", "gnome-control-center", "/bin/gnome-control-center sound"},
                    Choice{"Budgie", "Budgie:GNOME", "gnome-control-center budgie-control-center",
                           "/bin/budgie-control-center sound"},
                    Choice{"Kde", "KDE", "pavucontrol systemsettings", "/bin/systemsettings kcm_pulseaudio"},
                    Choice{"OlderKde", "KDE", "pavucontrol systemsettings5", "/bin/systemsettings5 kcm_pulseaudio"},
                    Choice{"Cinnamon", "X-Cinnamon", "cinnamon-settings gnome-control-center",
                           "/bin/cinnamon-settings sound"},
                    Choice{"Mate", "MATE", "pavucontrol mate-volume-control", "/bin/mate-volume-control"},
                    Choice{"Xfce", "XFCE", "gnome-control-center pavucontrol", "/bin/pavucontrol"},
                    Choice{"Lxqt", "LXQt", "pavucontrol pavucontrol-qt", "/bin/pavucontrol-qt"},
                    Choice{"OnlyAMixer", "GNOME", "pavucontrol", "/bin/pavucontrol"},
                    Choice{"UnknownDesktop", "sway", "systemsettings", "/bin/systemsettings kcm_pulseaudio"},
                    Choice{"NoDesktop", "", "pavucontrol", "/bin/pavucontrol"},
                    Choice{"OfAnotherDesktop", "XFCE", "gnome-control-center", ""}, Choice{"Nothing", "GNOME", "", ""}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(FreedesktopSoundSettingsTest, StartsTheProgram)
{
    const QTemporaryDir folder;
    const auto path = [&](const char* name) { return folder.filePath(QLatin1String(name)); };
    test::ScopedEnvironment environment;
    environment.set("XDG_CURRENT_DESKTOP", "GNOME");
    environment.set("PATH", QFile::encodeName(folder.path()));
    FreedesktopSoundSettings settings;
    EXPECT_FALSE(settings.isAvailable());
    settings.open();
    QFile program(path("gnome-control-center"));
    ASSERT_TRUE(program.open(QFile::WriteOnly));
    program.write("#!/bin/sh\necho \"$@\" >" + QFile::encodeName(path("arguments")) + "\nexec /bin/sleep 0.3\n");
    program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    program.close();
    EXPECT_TRUE(settings.isAvailable());
    settings.open();
    QFile arguments(path("arguments"));
    EXPECT_TRUE(test::waitFor([&] { return arguments.size() > 0; }));
    ASSERT_TRUE(arguments.open(QFile::ReadOnly));
    EXPECT_EQ(arguments.readAll(), "sound\n");
}

} // namespace
} // namespace quelto
