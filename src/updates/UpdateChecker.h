// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/SettingsFile.h"
#include "base/tasks/TaskQueue.h"
#include "updates/FeedRequest.h"
#include "updates/Release.h"

#include <QObject>
#include <QSslConfiguration>
#include <QUrl>

#include <memory>
#include <optional>

namespace quelto {

/// Looks for a newer version once a day and offers its page. Never installs anything.
///
/// The sheet opens by itself once for each version; the row in the sidebar shows as long as there is a newer version.
///
/// Thread: main. Errors: none. A check that fails is silent, and counts as one.
class UpdateChecker final : public QObject {
    Q_OBJECT
    /// Of the available release, as a line to show; empty for none.
    Q_PROPERTY(QString version READ version NOTIFY availableChanged)
    /// The changes in the available release, a line each; the first 200 and an ellipsis if there are more.
    Q_PROPERTY(QList<QString> notes READ notes NOTIFY availableChanged)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)
    Q_PROPERTY(bool showSheet READ showSheet WRITE setShowSheet NOTIFY showSheetChanged)

public:
    struct Dependencies {
        SettingsFile& file;
        TaskQueue& main;
        /// The manifest of the newest release, an HTTPS address. With an empty one nothing is ever requested.
        QUrl feed;
        /// Without one, every real version is newer.
        QString currentVersion;
        std::function<void(const QUrl&)> openUrl;
        /// The time of day. Units: seconds since 1970.
        std::function<double()> now;
        /// Nothing for the certificates of the system.
        std::optional<QSslConfiguration> tls = std::nullopt;
        /// For a whole check.
        std::chrono::milliseconds timeout = std::chrono::seconds(15);
    };

    explicit UpdateChecker(Dependencies dependencies, QObject* parent = nullptr);

    /// Checks at once, and from now on every hour whether the last check is a day old. Call once.
    void start();
    /// At the end of the program: ignores the check that is running, and starts no more.
    void stop();
    /// Requests the feed. A check that is running is replaced.
    void check();
    /// What a check does with the body of the answer.
    void receive(const QByteArray& body);
    bool isChecking() const { return m_request != nullptr; }

    /// The newest release that was found, if it is newer than this program.
    const std::optional<Release>& available() const { return m_available; }
    QString version() const { return m_available ? visibleLine(m_available->version) : QString(); }
    QStringList notes() const;
    const QString& currentVersion() const { return m_dependencies.currentVersion; }

    bool showSheet() const { return m_showSheet; }
    void setShowSheet(bool isShown);
    /// Closes the sheet and never opens it by itself again for this version.
    Q_INVOKABLE void skip();
    /// Opens the page of the release, if its address is one of the web, and closes the sheet.
    Q_INVOKABLE void download();

Q_SIGNALS:
    void availableChanged();
    void showSheetChanged();

private:
    void waitForNextTick();
    void tick();

    Dependencies m_dependencies;
    double m_lastCheck;
    QString m_skippedVersion;
    QString m_promptedVersion;
    std::optional<Release> m_available;
    bool m_showSheet = false;
    bool m_isStopped = false;
    std::unique_ptr<FeedRequest> m_request;
};

} // namespace quelto
