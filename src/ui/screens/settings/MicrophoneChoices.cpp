// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/MicrophoneChoices.h"

#include "base/language/T.h"
#include "ui/screens/settings/SettingsPageForQml.h"

#include <QCoreApplication>
#include <QPointer>

namespace quelto {

namespace {

QVariantMap choice(const QString& text, const QString& value)
{
    return {{QStringLiteral("text"), text}, {QStringLiteral("value"), value}};
}

} // namespace

MicrophoneChoices::MicrophoneChoices(QObject* parent)
    : MicrophoneChoices(*SettingsPageForQml::instance->platform.audioServer, parent)
{
}

MicrophoneChoices::MicrophoneChoices(AudioServer& server, QObject* parent)
    : QObject(parent)
    , m_server(server)
{
    refresh();
}

QVariantList MicrophoneChoices::choices() const
{
    QVariantList choices{choice(T("Sistem varsayılanı"), QString())};
    for (const auto& device : m_devices) {
        choices.append(choice(device.name, device.id));
    }
    return choices;
}

void MicrophoneChoices::refresh()
{
    // The reply runs on the server's thread, possibly after this object is destroyed.
    m_server.listMicrophones([choices = QPointer(this)](const QList<MicrophoneInfo>& devices) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [choices, devices] {
                if (choices) {
                    choices->setDevices(devices);
                }
            },
            Qt::QueuedConnection);
    });
}

void MicrophoneChoices::setDevices(const QList<MicrophoneInfo>& devices)
{
    if (std::exchange(m_devices, devices) != devices) {
        Q_EMIT changed();
    }
}

} // namespace quelto
