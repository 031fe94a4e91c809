// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopFileManager.h"

#include "base/files/FileName.h"
#include "platform/FileMimeData.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#include <filesystem>
#include <system_error>

namespace quelto {

namespace {

const QString FileManagerService = QStringLiteral("org.freedesktop.FileManager1");
const QString FileManagerPath = QStringLiteral("/org/freedesktop/FileManager1");
constexpr std::chrono::seconds FolderTimeout{3};

void openWithDefaultProgram(const QString& folder)
{
    // QUrl::fromLocalFile would replace bytes that are not UTF-8.
    QDesktopServices::openUrl(QUrl::fromEncoded(fileUri(folder)));
}

} // namespace

FreedesktopFileManager::FreedesktopFileManager(const QDBusConnection& bus)
    : m_bus(bus)
{
}

FreedesktopFileManager::~FreedesktopFileManager()
{
    m_replies->detach();
    if (m_queue) {
        m_queue->finish(FolderTimeout);
    }
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
            openWithDefaultProgram(QFileInfo(path).path());
        }
    });
}

void FreedesktopFileManager::openFolder(const QString& path)
{
    if (!m_queue) {
        m_queue = std::make_unique<SerialQueue>(QStringLiteral("quelto.folders"));
    }
    m_queue->post([replies = m_replies, path] {
        // If it cannot be created, the program that should open it tells the user.
        std::error_code ignored;
        std::filesystem::create_directories(encodeFileName(path).toStdString(), ignored);
        replies->post([path] { openWithDefaultProgram(path); });
    });
}

} // namespace quelto
