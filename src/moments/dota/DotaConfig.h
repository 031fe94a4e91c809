// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

namespace quelto {

/// The configuration file that makes Dota 2 post its state to Quelto, and the folders where the game expects it.
///
/// Thread: any. Each call reads the disk.
/// Errors: a folder that cannot be written is skipped.
class DotaConfig {
    Q_GADGET

public:
    enum class InstallState {
        /// No Dota 2 is installed in Steam.
        NotFound,
        /// At least one Dota 2 has no such file, or one with other content.
        NotInstalled,
        Installed,
    };
    Q_ENUM(InstallState)

    /// Numbers of Dota 2 installations.
    struct InstallResult {
        int written = 0;
        int failed = 0;

        bool operator==(const InstallResult&) const = default;
    };

    static inline const QString configName = QStringLiteral("gamestate_integration_quelto.cfg");

    DotaConfig(const QString& homeFolder, quint16 port);

    /// The content of the file.
    QString configText() const;
    /// The "cfg" folder of every Dota 2, without duplicates.
    QStringList cfgFolders() const;
    InstallState installState() const;
    /// Writes the file into every folder.
    InstallResult install() const;

private:
    QString m_homeFolder;
    quint16 m_port;
};

} // namespace quelto
