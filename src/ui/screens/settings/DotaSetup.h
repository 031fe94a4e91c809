// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/dota/DotaWatcher.h"
#include "platform/Pasteboard.h"
#include "ui/shared/Navigation.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// What the user does so that Dota 2 posts its state: installs the configuration file, and gives the game its launch
/// option in Steam. Reads at its creation, in the background, whether the file is installed.
///
/// Thread: main.
class DotaSetup : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Whether Dota 2 is installed.
    Q_PROPERTY(bool isGameFound READ isGameFound NOTIFY changed)
    /// Whether each Dota 2 has the file.
    Q_PROPERTY(bool isInstalled READ isInstalled NOTIFY changed)
    /// Whether the file is being written.
    Q_PROPERTY(bool isInstalling READ isInstalling NOTIFY changed)
    /// Whether the last installation could not write every file.
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY changed)

public:
    static inline const QString launchOption = QStringLiteral("-gamestateintegration");

    /// All outlive the object.
    struct Dependencies {
        DotaWatcher& watcher;
        Pasteboard& pasteboard;
        Navigation& navigation;
    };

    /// For QML; uses the objects that are registered there.
    explicit DotaSetup(QObject* parent = nullptr);
    explicit DotaSetup(const Dependencies& dependencies, QObject* parent = nullptr);

    bool isGameFound() const { return m_dependencies.watcher.installState() != DotaWatcher::InstallState::NotFound; }
    bool isInstalled() const { return m_dependencies.watcher.installState() == DotaWatcher::InstallState::Installed; }
    bool isInstalling() const { return m_dependencies.watcher.isInstalling(); }
    bool hasFailed() const { return m_dependencies.watcher.hasInstallFailed(); }

    /// Writes the file for each Dota 2, in the background. A toast reports the result, also when this object is gone by
    /// then. Does nothing while it is being written.
    Q_INVOKABLE void install();
    /// Copies the launch option to the clipboard. A toast says where it belongs.
    Q_INVOKABLE void copyLaunchOption();

Q_SIGNALS:
    void changed();

private:
    Dependencies m_dependencies;
};

} // namespace quelto
