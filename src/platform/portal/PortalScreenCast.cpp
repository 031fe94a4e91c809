// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalScreenCast.h"

#include "platform/portal/PortalErrors.h"
#include "platform/portal/PortalNames.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>

namespace quelto {

namespace {

enum SourceType : uint { Monitor = 1 };
enum CursorMode : uint { HiddenCursor = 1, EmbeddedCursor = 2 };
/// Until the user withdraws it.
constexpr uint PersistAlways = 2;
/// Since this version of the interface, a choice can be restored.
constexpr uint VersionWithTokens = 4;
/// A session is created within a few milliseconds, unless the program behind the portal has to start first.
constexpr int UsualCreation = 100;
/// GNOME's program has its interfaces before it knows the screens. Until then it asks the user although the token is
/// valid, and the token is lost.
constexpr auto LearningTime = std::chrono::milliseconds(300);

} // namespace

PortalScreenCast::PortalScreenCast(std::shared_ptr<PortalConnection> portal, const Options& options, Events events)
    : m_portal(std::move(portal))
    , m_options(options)
    , m_events(std::move(events))
{
    m_learning.setSingleShot(true);
    m_learning.setInterval(LearningTime);
    m_learning.callOnTimeout(this, [this] { selectSources(); });
    begin();
}

PortalScreenCast::~PortalScreenCast() = default;

void PortalScreenCast::begin()
{
    // QtDBus never finishes a call without a bus.
    if (!m_portal->bus().isConnected()) {
        fail(PortalEnd::unreachable);
        return;
    }
    m_creating.start();
    m_portal->registry().whenRegistered(this, m_options.timeLimit, [this] { readProperties(); });
}

void PortalScreenCast::readProperties()
{
    auto message =
        QDBusMessage::createMethodCall(portalNames::service, portalNames::path,
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
    message.setArguments({QString(portalNames::screenCast)});
    const auto limit = static_cast<int>(m_options.timeLimit.count());
    auto* const call = new QDBusPendingCallWatcher(m_portal->bus().asyncCall(message, limit), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        const QDBusPendingReply<QVariantMap> reply(*call);
        if (reply.isError()) {
            fail(isTransportError(reply.error()) ? PortalEnd::unreachable : PortalEnd::refused);
            return;
        }
        m_properties = reply.value();
        createSession();
    });
}

void PortalScreenCast::createSession()
{
    m_session = std::make_unique<PortalSession>(m_portal,
                                                PortalSession::Options{.interface = portalNames::screenCast,
                                                                       .token = PortalConnection::uniqueToken(),
                                                                       .others = {},
                                                                       .timeLimit = m_options.timeLimit},
                                                PortalSession::Events{.onCreated = [this] { sessionCreated(); },
                                                                      .onFailed = [this](PortalEnd end) { fail(end); },
                                                                      .onClosed =
                                                                          [this] {
                                                                              if (m_hasEnded) {
                                                                                  // A copy, because it may destroy this
                                                                                  // object.
                                                                                  const auto onClosed =
                                                                                      m_events.onClosed;
                                                                                  onClosed();
                                                                              } else {
                                                                                  fail(PortalEnd::failed);
                                                                              }
                                                                          }});
}

void PortalScreenCast::sessionCreated()
{
    if (m_creating.hasExpired(UsualCreation)) {
        m_learning.start();
    } else {
        selectSources();
    }
}

QVariantMap PortalScreenCast::sourceOptions()
{
    QVariantMap options{{QStringLiteral("types"), uint{SourceType::Monitor}}, {QStringLiteral("multiple"), false}};
    // A mode that the portal does not list is an error there.
    const auto mode =
        m_options.cursor == ScreenCastCursor::embedded ? CursorMode::EmbeddedCursor : CursorMode::HiddenCursor;
    if ((m_properties.value(QStringLiteral("AvailableCursorModes")).toUInt() & mode) != 0) {
        options.insert(QStringLiteral("cursor_mode"), uint{mode});
    }
    if (m_properties.value(QStringLiteral("version")).toUInt() >= VersionWithTokens) {
        options.insert(QStringLiteral("persist_mode"), PersistAlways);
        const auto token = m_options.choice == ScreenCastChoice::last ? m_options.token.load() : QString();
        if (!token.isEmpty()) {
            options.insert(QStringLiteral("restore_token"), token);
        }
    }
    return options;
}

void PortalScreenCast::selectSources()
{
    request({.interface = portalNames::screenCast,
             .method = QStringLiteral("SelectSources"),
             .arguments = {QVariant::fromValue(QDBusObjectPath(m_session->path()))},
             .options = sourceOptions()},
            [this](const QVariantMap& /*results*/) { start(); });
}

void PortalScreenCast::start()
{
    const QString noParentWindow = QStringLiteral("");
    request({.interface = portalNames::screenCast,
             .method = QStringLiteral("Start"),
             .arguments = {QVariant::fromValue(QDBusObjectPath(m_session->path())), noParentWindow},
             .options = {},
             .answer = PortalAnswer::byUser},
            [this](const QVariantMap& results) {
                // Whatever comes back: a token that was sent is used up.
                m_options.token.save(restoreToken(results));
                const auto node = firstStream(results);
                if (node) {
                    openRemote(*node);
                } else {
                    fail(PortalEnd::failed);
                }
            });
}

void PortalScreenCast::openRemote(const ScreenCastNode& node)
{
    auto message = QDBusMessage::createMethodCall(portalNames::service, portalNames::path, portalNames::screenCast,
                                                  QStringLiteral("OpenPipeWireRemote"));
    message.setArguments({QVariant::fromValue(QDBusObjectPath(m_session->path())), QVariantMap()});
    const auto limit = static_cast<int>(m_options.timeLimit.count());
    auto* const call = new QDBusPendingCallWatcher(m_portal->bus().asyncCall(message, limit), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, node] {
        call->deleteLater();
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply(*call);
        if (m_hasEnded) {
            return;
        }
        auto descriptor = reply.isError() ? QDBusUnixFileDescriptor() : reply.value();
        if (!descriptor.isValid()) {
            fail(reply.isError() && isTransportError(reply.error()) ? PortalEnd::unreachable : PortalEnd::failed);
            return;
        }
        finish({.node = node, .remote = std::make_shared<FileDescriptor>(descriptor.takeFileDescriptor())});
    });
}

void PortalScreenCast::request(PortalCall call, std::function<void(const QVariantMap&)> onConfirmed)
{
    call.timeLimit = m_options.timeLimit;
    m_request = std::make_unique<PortalRequest>(
        m_portal, std::move(call), [this, onConfirmed = std::move(onConfirmed)](const PortalResponse& response) {
            m_request.reset();
            if (response.end == PortalEnd::confirmed) {
                onConfirmed(response.results);
            } else {
                fail(response.end);
            }
        });
}

void PortalScreenCast::fail(PortalEnd end)
{
    if (m_hasEnded) {
        return;
    }
    m_learning.stop();
    m_request.reset();
    m_session.reset();
    const auto hasLostPortal = end == PortalEnd::vanished || end == PortalEnd::unreachable;
    if (hasLostPortal && !std::exchange(m_hasRestarted, true)) {
        if (m_properties.isEmpty()) {
            begin();
        } else {
            m_creating.start();
            createSession();
        }
        return;
    }
    m_hasEnded = true;
    QMetaObject::invokeMethod(
        this, [onFailed = m_events.onFailed, end] { onFailed(end); }, Qt::QueuedConnection);
}

void PortalScreenCast::finish(const ScreenCastStream& stream)
{
    m_hasEnded = true;
    QMetaObject::invokeMethod(
        this, [onStarted = m_events.onStarted, stream] { onStarted(stream); }, Qt::QueuedConnection);
}

} // namespace quelto
