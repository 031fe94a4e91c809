// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace quelto::pipewire {

/// What the sound server knows about the program behind a client. Each part may be empty.
struct ProgramIdentity {
    /// What the program calls itself.
    QStringList names;
    /// The file name of its executable.
    QString binary;
    /// Ids of its desktop entry, Flatpak or Snap.
    QStringList ids;
    /// The AppArmor label of its process, such as "snap.discord.discord (enforce)".
    QString securityLabel;
    /// The contents of /proc/PID/cmdline. Present only if isApplicationRuntime() is true for the binary.
    QByteArray commandLine;
};

/// Whether executables of that name run an application that only their command line names, as Electron's does.
bool isApplicationRuntime(const QString& binary);

} // namespace quelto::pipewire
