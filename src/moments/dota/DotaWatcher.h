// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/dota/DotaConfig.h"
#include "moments/dota/DotaMatch.h"
#include "moments/scoring/GameNames.h"
#include "moments/watcher/MatchWatcher.h"

#include <QDir>

#include <memory>

class QTimer;

namespace quelto {

class DotaListener;

/// Follows Dota 2 through the state that the game posts. Starting the watcher also installs the configuration file in
/// every Dota 2 in Steam. The game must be started with "-gamestateintegration", which only the user can set in Steam.
///
/// Thread: main.
class DotaWatcher final : public quelto::MatchWatcher {
    Q_OBJECT
    Q_PROPERTY(quelto::DotaConfig::InstallState installState READ installState NOTIFY installStateChanged)
    /// Why posts cannot be received; empty if they can.
    Q_PROPERTY(QString listenerError READ listenerError NOTIFY listenerErrorChanged)

public:
    using InstallState = DotaConfig::InstallState;

    static QString gameName() { return gameNames::dota2; }
    static inline const QString configName = DotaConfig::configName;
    static constexpr quint16 ListeningPort = 37231;

    explicit DotaWatcher(const QString& homeFolder = QDir::homePath(), quint16 port = ListeningPort,
                         QObject* parent = nullptr);
    ~DotaWatcher() override;

    QString hero() const { return character(); }
    InstallState installState() const { return m_installState; }
    /// Whether install() is at work.
    bool isInstalling() const noexcept { return m_isInstalling; }
    /// Whether the last install() could not write every file, and none of it has been put right since.
    bool hasInstallFailed() const noexcept { return m_hasInstallFailed; }
    QString listenerError() const { return m_listenerError; }
    const DotaConfig& config() const { return m_config; }

    /// Reads the disk again, in the background. Also works while the watcher is stopped.
    Q_INVOKABLE void refreshInstallState();
    /// Writes the file for every Dota 2, in the background, and emits installed(). Also works while the watcher is
    /// stopped. Does nothing while it is being written.
    Q_INVOKABLE void install();

Q_SIGNALS:
    void installStateChanged();
    /// Emitted when isInstalling() or hasInstallFailed() changes.
    void installationChanged();
    /// Emitted after each install(), with the numbers of Dota 2 installations; installState() is up to date.
    void installed(int written, int failed);
    void listenerErrorChanged();

private:
    void open() override;
    void close() override;

    void updateConfig();
    void listen();
    void processPost(const QByteArray& body);
    void tick();
    void updateTimer();

    void setInstallState(InstallState state);
    void finishInstallation(const DotaConfig::InstallResult& result);
    void setListenerError(const QString& text);

    const DotaConfig m_config;
    const quint16 m_port;
    InstallState m_installState = InstallState::NotFound;
    bool m_isInstalling = false;
    bool m_hasInstallFailed = false;
    QString m_listenerError;

    // Used on the watcher's queue only.
    DotaMatch m_match;
    std::unique_ptr<DotaListener> m_listener;
    std::unique_ptr<QTimer> m_timer;
};

} // namespace quelto
