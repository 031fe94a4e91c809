// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/PortalFolderDialog.h"

#include "base/files/FileName.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QRandomGenerator>
#include <QWindow>

#include <optional>

namespace quelto {

namespace {

const auto Portal = QStringLiteral("org.freedesktop.portal.Desktop");
const auto PortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto FileChooser = QStringLiteral("org.freedesktop.portal.FileChooser");
const auto RequestInterface = QStringLiteral("org.freedesktop.portal.Request");

enum Response : uint { Confirmed = 0, Cancelled = 1 };

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

} // namespace

PortalFolderDialog::PortalFolderDialog(const QDBusConnection& bus, const FolderDialog::Request& request,
                                       std::chrono::milliseconds timeout)
    : m_bus(bus)
    , m_portal(Portal, bus, QDBusServiceWatcher::WatchForUnregistration)
{
    connect(&m_portal, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { end(&PortalFolderDialog::cancelled); });
    open(request, timeout);
}

PortalFolderDialog::~PortalFolderDialog()
{
    if (!m_hasEnded) {
        close();
    }
}

void PortalFolderDialog::open(const FolderDialog::Request& request, std::chrono::milliseconds timeout)
{
    const auto token = QStringLiteral("quelto%1").arg(QRandomGenerator::global()->generate());
    const auto sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    // Before the call, because the user may be faster than its reply.
    listenTo(PortalPath + QStringLiteral("/request/") + sender + u'/' + token);
    const QVariantMap options{{QStringLiteral("handle_token"), token},
                              {QStringLiteral("accept_label"), request.acceptLabel},
                              {QStringLiteral("modal"), true},
                              {QStringLiteral("multiple"), false},
                              {QStringLiteral("directory"), true},
                              {QStringLiteral("current_folder"), encodeFileName(request.startFolder) + '\0'}};
    auto message = QDBusMessage::createMethodCall(Portal, PortalPath, FileChooser, QStringLiteral("OpenFile"));
    message.setArguments({nameForPortal(request.parent), request.title, options});
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(message, static_cast<int>(timeout.count())), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply(*call);
        if (m_hasEnded) {
            return;
        }
        if (reply.isError()) {
            // It may open after the timeout.
            close();
            end(&PortalFolderDialog::unavailable);
        } else if (reply.value().path() != m_requestPath) {
            listenTo(reply.value().path());
        }
    });
}

void PortalFolderDialog::listenTo(const QString& requestPath)
{
    m_requestPath = requestPath;
    m_bus.connect(Portal, requestPath, RequestInterface, QStringLiteral("Response"), this,
                  SLOT(respond(uint, QVariantMap)));
}

void PortalFolderDialog::respond(uint response, const QVariantMap& results)
{
    if (m_hasEnded) {
        return;
    }
    const auto path = pathOf(results.value(QStringLiteral("uris")).toStringList().value(0));
    if (response == Response::Confirmed && path) {
        m_hasEnded = true;
        Q_EMIT chosen(*path);
    } else {
        const bool isByUser = response == Response::Confirmed || response == Response::Cancelled;
        end(isByUser ? &PortalFolderDialog::cancelled : &PortalFolderDialog::unavailable);
    }
}

void PortalFolderDialog::end(void (PortalFolderDialog::*signal)())
{
    if (!m_hasEnded) {
        m_hasEnded = true;
        Q_EMIT(this->*signal)();
    }
}

void PortalFolderDialog::close()
{
    m_bus.asyncCall(QDBusMessage::createMethodCall(Portal, m_requestPath, RequestInterface, QStringLiteral("Close")));
}

} // namespace quelto
