// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FolderDialog.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantMap>

namespace quelto {

/// One dialog that the desktop shows through org.freedesktop.portal.FileChooser. Destruction closes it.
///
/// Emits one of its signals, once.
class PortalFolderDialog final : public QObject {
    Q_OBJECT

public:
    /// The timeout is for opening the dialog, not for the user.
    PortalFolderDialog(const QDBusConnection& bus, const FolderDialog::Request& request,
                       std::chrono::milliseconds timeout);
    ~PortalFolderDialog() override;
    PortalFolderDialog(const PortalFolderDialog&) = delete;
    PortalFolderDialog& operator=(const PortalFolderDialog&) = delete;

Q_SIGNALS:
    void chosen(const QString& path);
    void cancelled();
    /// The desktop shows no such dialog.
    void unavailable();

private Q_SLOTS:
    void respond(uint response, const QVariantMap& results);

private:
    void open(const FolderDialog::Request& request, std::chrono::milliseconds timeout);
    void listenTo(const QString& requestPath);
    void end(void (PortalFolderDialog::*signal)());
    void close();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_portal;
    /// Of the object on the bus that stands for the dialog.
    QString m_requestPath;
    bool m_hasEnded = false;
};

} // namespace quelto
