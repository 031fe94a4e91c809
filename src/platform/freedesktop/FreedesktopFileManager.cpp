// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopFileManager.h"

#include "platform/FileMimeData.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace quelto {

namespace {

const QString FileManagerService = QStringLiteral("org.freedesktop.FileManager1");
const QString FileManagerPath = QStringLiteral("/org/freedesktop/FileManager1");

} // namespace

FreedesktopFileManager::FreedesktopFileManager(const QDBusConnection& bus)
    : m_bus(bus)
{
}

void FreedesktopFileManager::reveal(const QString& path)
{
    const auto uri = QString::fromLatin1(fileUri(path));
    QDBusMessage message = QDBusMessage::createMethodCall(FileManagerService, FileManagerPath, FileManagerService,
                                                          QStringLiteral("ShowItems"));
    const QString noStartupId = QStringLiteral("");
    message.setArguments({QStringList(uri), noStartupId});
    auto* call = new QDBusPendingCallWatcher(m_bus.asyncCall(message), &m_pendingCalls);
    QObject::connect(call, &QDBusPendingCallWatcher::finished, &m_pendingCalls, [call, path] {
        call->deleteLater();
        if (call->isError()) {
            QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).path()));
        }
    });
}

void FreedesktopFileManager::openFolder(const QString& path)
{
    QDir().mkpath(path);
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace quelto
