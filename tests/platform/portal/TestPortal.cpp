// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestPortal.h"

#include "platform/portal/PortalNames.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>

#include <gtest/gtest.h>

namespace quelto::test {

namespace {

QDBusMessage unknownMethod(const QDBusMessage& message)
{
    return message.createErrorReply(QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"), QStringLiteral("none"));
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const PortalStream& stream)
{
    argument.beginStructure();
    argument << stream.node << stream.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalStream& stream)
{
    argument.beginStructure();
    argument >> stream.node >> stream.properties;
    argument.endStructure();
    return argument;
}

QVariant streams(const QList<PortalStream>& list)
{
    qDBusRegisterMetaType<PortalStream>();
    qDBusRegisterMetaType<QList<PortalStream>>();
    return QVariant::fromValue(list);
}

QVariantMap TestPortal::Call::options() const
{
    return arguments.isEmpty() ? QVariantMap() : qdbus_cast<QVariantMap>(arguments.last());
}

TestPortal::TestPortal()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("test portal")))
{
    EXPECT_TRUE(m_bus.registerVirtualObject(portalNames::path, this, QDBusConnection::SubPath));
    EXPECT_TRUE(m_bus.registerService(portalNames::service));
}

TestPortal::~TestPortal()
{
    m_bus.unregisterService(portalNames::service);
    QDBusConnection::disconnectFromBus(m_bus.name());
}

QString TestPortal::introspect(const QString& /*path*/) const
{
    return {};
}

QList<TestPortal::Call> TestPortal::callsOf(const char* method) const
{
    QList<Call> found;
    std::ranges::copy_if(m_calls, std::back_inserter(found),
                         [&](const Call& call) { return call.method == QLatin1String(method); });
    return found;
}

QStringList TestPortal::methods() const
{
    QStringList names;
    std::ranges::transform(m_calls, std::back_inserter(names), &Call::method);
    return names;
}

bool TestPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& bus)
{
    m_calls.append({.path = message.path(),
                    .interface = message.interface(),
                    .method = message.member(),
                    .arguments = message.arguments()});
    const auto isOffered =
        std::ranges::any_of(interfaces, [&](const QString& name) { return message.interface().endsWith(u'.' + name); });
    if (message.path() == portalNames::path && isOffered && message.member() != QLatin1String("OpenPipeWireRemote")) {
        answerRequest(message);
    } else if (delayedMethods.contains(message.member())) {
        m_delayed.append(message);
    } else {
        EXPECT_TRUE(bus.send(plainReply(message)));
    }
    return true;
}

QDBusMessage TestPortal::plainReply(const QDBusMessage& message)
{
    if (message.member() == QLatin1String("OpenPipeWireRemote")) {
        const auto made = makeRemote ? makeRemote() : FileDescriptor();
        const int descriptor = makeRemote ? made.get() : remote;
        return descriptor < 0 ? unknownMethod(message)
                              : message.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(descriptor)));
    }
    if (message.interface() == QLatin1String("org.freedesktop.DBus.Properties") &&
        interfaces.contains(message.arguments().value(0).toString().section(u'.', -1))) {
        return message.createReply(properties);
    }
    const auto isRegistration = hasRegistry && message.interface() == portalNames::registry;
    const auto isClosing = message.member() == QLatin1String("Close");
    return isRegistration || isClosing ? message.createReply() : unknownMethod(message);
}

PortalBehaviour TestPortal::behaviourOf(const QString& method)
{
    auto& list = behaviours[method];
    if (list.isEmpty()) {
        return {};
    }
    return list.size() > 1 ? list.takeFirst() : list.first();
}

void TestPortal::answerRequest(const QDBusMessage& message)
{
    auto behaviour = behaviourOf(message.member());
    const auto options = m_calls.last().options();
    const auto sender = message.service().mid(1).replace(u'.', u'_');
    m_caller = message.service();
    const auto token = behaviour.reply == PortalBehaviour::Reply::ownPath
        ? QStringLiteral("own")
        : options.value(QStringLiteral("handle_token")).toString();
    m_request = QString(portalNames::path) + QStringLiteral("/request/") + sender + u'/' + token;
    if (message.member() == QLatin1String("CreateSession")) {
        m_session = QString(portalNames::path) + QStringLiteral("/session/") + sender + u'/' +
            options.value(QStringLiteral("session_handle_token")).toString();
        if (behaviour.results.isEmpty()) {
            behaviour.results.insert(QStringLiteral("session_handle"), m_session);
        }
    }
    if (behaviour.response == PortalBehaviour::Response::beforeReply) {
        sendResponse(m_request, behaviour);
    }
    switch (behaviour.reply) {
    case PortalBehaviour::Reply::path:
    case PortalBehaviour::Reply::ownPath:
        EXPECT_TRUE(m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(m_request)))));
        break;
    case PortalBehaviour::Reply::wrongType:
        EXPECT_TRUE(m_bus.send(message.createReply(42)));
        break;
    case PortalBehaviour::Reply::error:
        EXPECT_TRUE(m_bus.send(message.createErrorReply(behaviour.error, QStringLiteral("for the test"))));
        return;
    case PortalBehaviour::Reply::none:
        return;
    }
    if (behaviour.response == PortalBehaviour::Response::afterReply ||
        behaviour.response == PortalBehaviour::Response::malformed) {
        sendResponse(m_request, behaviour);
    }
}

void TestPortal::sendResponse(const QString& path, const PortalBehaviour& behaviour)
{
    if (behaviour.response == PortalBehaviour::Response::malformed) {
        emitSignal(path, "org.freedesktop.portal.Request", "Response", {QStringLiteral("0")});
    } else {
        emitSignal(path, "org.freedesktop.portal.Request", "Response", {behaviour.code, behaviour.results});
    }
}

void TestPortal::replyToDelayed()
{
    for (const auto& message : std::exchange(m_delayed, {})) {
        EXPECT_TRUE(m_bus.send(plainReply(message)));
    }
}

void TestPortal::respond(uint code, const QVariantMap& results)
{
    emitSignal(m_request, "org.freedesktop.portal.Request", "Response", {code, results});
}

void TestPortal::emitSignal(const QString& path, const char* interface, const char* name, const QVariantList& arguments)
{
    auto signal =
        QDBusMessage::createTargetedSignal(m_caller, path, QLatin1String(interface), QString::fromLatin1(name));
    signal.setArguments(arguments);
    EXPECT_TRUE(m_bus.send(signal));
}

} // namespace quelto::test
