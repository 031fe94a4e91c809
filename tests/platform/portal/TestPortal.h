// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QList>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace quelto::test {

/// How the portal answers one call of a method.
struct PortalBehaviour {
    enum class Reply { path, ownPath, wrongType, error, none };
    enum class Response { afterReply, beforeReply, malformed, none };

    Reply reply = Reply::path;
    Response response = Response::afterReply;
    uint code = 0;
    QVariantMap results;
    QString error;
};

/// A stream in the results of a screen cast.
struct PortalStream {
    uint node = 0;
    QVariantMap properties;
};

/// A desktop portal on a separate bus connection that shows nothing. It does what the test tells it, also what real
/// ones do only rarely or never.
class TestPortal final : public QDBusVirtualObject {
    Q_OBJECT

public:
    struct Call {
        QString path;
        QString interface;
        QString method;
        QVariantList arguments;

        QVariantMap options() const;
    };

    TestPortal();
    ~TestPortal() override;
    TestPortal(const TestPortal&) = delete;
    TestPortal& operator=(const TestPortal&) = delete;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

    void replyToDelayed();
    /// Answers the last call that has no response yet.
    void respond(uint code, const QVariantMap& results = {});
    void emitSignal(const QString& path, const char* interface, const char* name, const QVariantList& arguments);

    QList<Call> callsOf(const char* method) const;
    int count(const char* method) const { return static_cast<int>(callsOf(method).size()); }
    /// The method of every call, in order.
    QStringList methods() const;
    /// The path of the session that was created last.
    QString session() const { return m_session; }

    /// By method; the last one of a list stays. Without one, the portal confirms.
    QHash<QString, QList<PortalBehaviour>> behaviours;
    /// Calls of other interfaces get an error.
    QStringList interfaces{QStringLiteral("ScreenCast"), QStringLiteral("GlobalShortcuts"), QStringLiteral("Test")};
    bool hasRegistry = true;
    QVariantMap properties{{QStringLiteral("version"), 4U},
                           {QStringLiteral("AvailableSourceTypes"), 3U},
                           {QStringLiteral("AvailableCursorModes"), 7U}};
    /// The methods, other than requests, whose calls get their reply from replyToDelayed().
    QStringList delayedMethods;
    /// What OpenPipeWireRemote returns; -1 for an error.
    int remote = -1;
    /// Makes what OpenPipeWireRemote returns in place of that.
    std::function<FileDescriptor()> makeRemote;

private:
    PortalBehaviour behaviourOf(const QString& method);
    QDBusMessage plainReply(const QDBusMessage& message);
    void answerRequest(const QDBusMessage& message);
    void sendResponse(const QString& path, const PortalBehaviour& behaviour);

    QDBusConnection m_bus;
    QList<QDBusMessage> m_delayed;
    QList<Call> m_calls;
    QString m_caller;
    QString m_request;
    QString m_session;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalStream& stream);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalStream& stream);
QVariant streams(const QList<PortalStream>& list);

} // namespace quelto::test

Q_DECLARE_METATYPE(quelto::test::PortalStream)
