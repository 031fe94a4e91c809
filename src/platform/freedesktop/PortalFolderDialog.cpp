// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/PortalFolderDialog.h"

#include "base/files/FileName.h"
#include "platform/portal/PortalNames.h"

#include <QGuiApplication>
#include <QWindow>

#include <optional>

namespace quelto {

namespace {

/// The path of a local file's URI. Its escapes stand for bytes, which need not be text.
std::optional<QString> pathOf(const QString& uri)
{
    const auto bytes = uri.toUtf8();
    const QByteArrayView scheme = "file://";
    const auto start = bytes.indexOf('/', scheme.size());
    if (!bytes.startsWith(scheme) || start < 0) {
        return std::nullopt;
    }
    const auto path = QByteArray::fromPercentEncoding(bytes.mid(start));
    return path.contains('\0') ? std::nullopt : std::optional(decodeFileName(path));
}

QString nameForPortal(const QWindow* window)
{
    return window != nullptr && QGuiApplication::platformName() == QLatin1String("xcb")
        ? QStringLiteral("x11:") + QString::number(window->winId(), 16)
        : QString();
}

PortalCall openFileCall(const FolderDialog::Request& request, std::chrono::milliseconds timeout)
{
    return {.interface = portalNames::fileChooser,
            .method = QStringLiteral("OpenFile"),
            .arguments = {nameForPortal(request.parent), request.title},
            .options = {{QStringLiteral("accept_label"), request.acceptLabel},
                        {QStringLiteral("modal"), true},
                        {QStringLiteral("multiple"), false},
                        {QStringLiteral("directory"), true},
                        {QStringLiteral("current_folder"), encodeFileName(request.startFolder) + '\0'}},
            .timeLimit = timeout,
            .answer = PortalAnswer::byUser};
}

} // namespace

PortalFolderDialog::PortalFolderDialog(const std::shared_ptr<PortalConnection>& portal,
                                       const FolderDialog::Request& request, std::chrono::milliseconds timeout)
    : m_request(portal, openFileCall(request, timeout), [this](const PortalResponse& response) { respond(response); })
{
}

void PortalFolderDialog::respond(const PortalResponse& response)
{
    switch (response.end) {
    case PortalEnd::confirmed:
        if (const auto path = pathOf(response.results.value(QStringLiteral("uris")).toStringList().value(0))) {
            Q_EMIT chosen(*path);
            return;
        }
        [[fallthrough]];
    case PortalEnd::cancelled:
    case PortalEnd::vanished:
        Q_EMIT cancelled();
        return;
    case PortalEnd::failed:
    case PortalEnd::refused:
    case PortalEnd::unreachable:
    case PortalEnd::timedOut:
        Q_EMIT unavailable();
        return;
    }
}

} // namespace quelto
