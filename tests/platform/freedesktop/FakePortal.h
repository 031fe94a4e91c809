// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QVariantMap>

namespace quelto {

/// The part of the portal that stands for an open dialog.
class FakePortalRequest final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")

public:
    int closings = 0;

public Q_SLOTS:
    void Close() { ++closings; }
};

/// A desktop portal on a separate bus connection. It shows nothing; the test answers.
class FakePortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")

public:
    enum class Service { complete, withoutFileChooser };
    /// Where the portal says that the dialog is: under the path that the caller expects, as all do since 2019.
    enum class Handle { expected, own };

    explicit FakePortal(Service service = Service::complete);
    ~FakePortal() override;
    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;

    /// Tells the caller of the last dialog how it ended.
    void respond(uint response, const QStringList& uris = {});
    /// How often callers closed the dialog.
    int closings() const { return m_request.closings; }

    Handle handle = Handle::expected;
    /// The response comes before the reply to the call.
    bool isHasty = false;
    /// Calls get no reply.
    bool isSilent = false;
    int dialogs = 0;
    QString parentWindow;
    QString title;
    QVariantMap options;

public Q_SLOTS:
    QDBusObjectPath OpenFile(const QString& parentWindow, const QString& title, const QVariantMap& options,
                             const QDBusMessage& message);

private:
    QDBusConnection m_bus;
    FakePortalRequest m_request;
    QString m_requestPath;
    QString m_caller;
};

} // namespace quelto
