// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/OpenNotifications.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace quelto {

namespace {

/// A larger file is not ours.
constexpr qint64 MaxSize = 1024 * 1024;

const QString Id = QStringLiteral("id");
const QString Title = QStringLiteral("title");
const QString Body = QStringLiteral("body");
const QString Action = QStringLiteral("action");
const QString Server = QStringLiteral("server");
const QString ServerId = QStringLiteral("serverId");
const QString ShownAt = QStringLiteral("shown");

QJsonObject encoded(const OpenNotification& open)
{
    return {{Id, open.notification.id},
            {Title, open.notification.title},
            {Body, open.notification.body},
            {Action, open.notification.action},
            {Server, open.server},
            {ServerId, static_cast<qint64>(open.serverId)},
            {ShownAt, open.shown.toUTC().toString(Qt::ISODateWithMs)}};
}

OpenNotification decoded(const QJsonObject& object)
{
    return {.notification = {.id = object[Id].toString(),
                             .title = object[Title].toString(),
                             .body = object[Body].toString(),
                             .action = object[Action].toString(),
                             .outlivesProgram = true},
            .server = object[Server].toString(),
            .serverId = static_cast<uint>(object[ServerId].toInteger()),
            .shown = QDateTime::fromString(object[ShownAt].toString(), Qt::ISODateWithMs)};
}

} // namespace

QString OpenNotifications::defaultPath()
{
    // Not QStandardPaths, which would create a folder.
    const auto folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/quelto-notifications.json");
}

OpenNotifications::OpenNotifications(QString path)
    : m_path(std::move(path))
{
}

QList<OpenNotification> OpenNotifications::load() const
{
    QFile file(m_path);
    if (m_path.isEmpty() || !file.open(QIODevice::ReadOnly) || file.size() > MaxSize) {
        return {};
    }
    QList<OpenNotification> notifications;
    for (const auto& value : QJsonDocument::fromJson(file.readAll()).array()) {
        const auto open = decoded(value.toObject());
        if (!open.notification.id.isEmpty() && !open.server.isEmpty() && open.serverId != 0 && open.shown.isValid()) {
            notifications.append(open);
        }
    }
    return notifications;
}

void OpenNotifications::save(const QList<OpenNotification>& notifications) const
{
    if (m_path.isEmpty()) {
        return;
    }
    if (notifications.isEmpty()) {
        QFile::remove(m_path);
        return;
    }
    QJsonArray array;
    std::ranges::transform(notifications, std::back_inserter(array), &encoded);
    QSaveFile file(m_path);
    const auto json = QJsonDocument(array).toJson(QJsonDocument::Compact);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(json) == json.size()) {
        file.commit();
    }
}

} // namespace quelto
