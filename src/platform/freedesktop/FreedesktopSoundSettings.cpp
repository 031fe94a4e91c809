// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopSoundSettings.h"

#include <QProcess>
#include <QStandardPaths>

#include <array>

namespace quelto {

namespace {

struct Row {
    /// Null for a program that suits any desktop.
    const char* desktop;
    const char* program;
    /// Null for none.
    const char* argument;
};

/// The first one that is installed is used. The programs of a desktop may refuse to run on another one.
constexpr std::array Programs{
    Row{"Budgie", "budgie-control-center", "sound"},  Row{"Unity", "unity-control-center", "sound"},
    Row{"GNOME", "gnome-control-center", "sound"},    Row{"KDE", "systemsettings", "kcm_pulseaudio"},
    Row{"KDE", "systemsettings5", "kcm_pulseaudio"},  Row{"X-Cinnamon", "cinnamon-settings", "sound"},
    Row{"MATE", "mate-volume-control", nullptr},      Row{"COSMIC", "cosmic-settings", "sound"},
    Row{"LXQt", "pavucontrol-qt", nullptr},           Row{nullptr, "pavucontrol", nullptr},
    Row{nullptr, "pavucontrol-qt", nullptr},          Row{nullptr, "pwvucontrol", nullptr},
    Row{nullptr, "systemsettings", "kcm_pulseaudio"},
};

std::optional<SoundSettingsCommand> commandHere()
{
    return soundSettingsCommand(qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts),
                                [](const QString& name) { return QStandardPaths::findExecutable(name); });
}

} // namespace

std::optional<SoundSettingsCommand> soundSettingsCommand(const QStringList& desktops,
                                                         const std::function<QString(const QString&)>& find)
{
    for (const auto& row : Programs) {
        if (row.desktop == nullptr || desktops.contains(QLatin1String(row.desktop), Qt::CaseInsensitive)) {
            if (const auto program = find(QLatin1String(row.program)); !program.isEmpty()) {
                const auto arguments =
                    row.argument == nullptr ? QStringList() : QStringList(QLatin1String(row.argument));
                return SoundSettingsCommand{.program = program, .arguments = arguments};
            }
        }
    }
    return std::nullopt;
}

bool FreedesktopSoundSettings::isAvailable() const
{
    return commandHere().has_value();
}

void FreedesktopSoundSettings::open()
{
    if (const auto command = commandHere()) {
        QProcess::startDetached(command->program, command->arguments);
    }
}

} // namespace quelto
