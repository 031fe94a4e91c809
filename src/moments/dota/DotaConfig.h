// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

namespace quelto {

/// The file that makes Dota 2 post its state to us, and the folders of the game that it has to lie in.
///
/// Thread: any; each call reads the disk anew. Errors: a folder that cannot be written is passed over.
class DotaConfig {
    Q_GADGET

public:
    enum class InstallState {
        /// Steam has no Dota 2.
        NotFound,
        /// At least one Dota 2 lacks the file as it has to be.
        NotInstalled,
        Installed,
    };
    Q_ENUM(InstallState)

    static inline const QString configName = QStringLiteral("gamestate_integration_quelto.cfg");

    DotaConfig(const QString& homeFolder, quint16 port);

    /// The whole file.
    QString configText() const;
    /// The settings folder of every Dota 2, each once.
    QStringList cfgFolders() const;
    InstallState installState() const;
    /// Writes the file into every folder; true if one got it.
    bool install() const;

private:
    QString m_homeFolder;
    quint16 m_port;
};

} // namespace quelto
