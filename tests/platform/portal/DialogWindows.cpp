// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogWindows.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>

namespace quelto::test {

namespace {

const auto Root = QStringLiteral("/org/a11y/atspi/accessible/root");
const auto Accessible = QStringLiteral("org.a11y.atspi.Accessible");

QString accessibilityBus()
{
    const QDBusReply<QString> address = QDBusConnection::sessionBus().call(
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
    return address.value();
}

} // namespace

DialogWindows::DialogWindows()
    : m_bus(QDBusConnection::connectToBus(accessibilityBus(), QStringLiteral("accessibility")))
{
}

QVariant DialogWindows::property(const QString& program, const char* name) const
{
    auto message = QDBusMessage::createMethodCall(program, Root, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                  QStringLiteral("Get"));
    message.setArguments({Accessible, QString::fromLatin1(name)});
    const QDBusReply<QDBusVariant> reply = m_bus.call(message);
    return reply.value().variant();
}

int DialogWindows::count() const
{
    const auto reply = m_bus.call(QDBusMessage::createMethodCall(QStringLiteral("org.a11y.atspi.Registry"), Root,
                                                                 Accessible, QStringLiteral("GetChildren")));
    if (reply.signature() != QLatin1String("a(so)")) {
        return 0;
    }
    const auto children = reply.arguments().at(0).value<QDBusArgument>();
    int windows = 0;
    children.beginArray();
    while (!children.atEnd()) {
        QString program;
        QDBusObjectPath path;
        children.beginStructure();
        children >> program >> path;
        children.endStructure();
        if (property(program, "Name") == QStringLiteral("xdg-desktop-portal-gnome")) {
            windows += property(program, "ChildCount").toInt();
        }
    }
    children.endArray();
    return windows;
}

} // namespace quelto::test
