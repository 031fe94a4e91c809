// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/SoundSettings.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quelto {

/// A program that shows the sound settings, found by its absolute path.
struct SoundSettingsCommand {
    QString program;
    QStringList arguments;
};

/// The best program of those that are installed: one of this desktop, otherwise one that suits any. `find` returns the
/// path of a program, empty if it is not installed. The desktops are as in XDG_CURRENT_DESKTOP.
std::optional<SoundSettingsCommand> soundSettingsCommand(const QStringList& desktops,
                                                         const std::function<QString(const QString&)>& find);

/// The settings program of this desktop, or a mixer of the sound server.
class FreedesktopSoundSettings final : public SoundSettings {
public:
    bool isAvailable() const override;
    void open() override;
};

} // namespace quelto
