// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The choices of a microphone: the system's default, then the present devices. Lists the devices at its creation.
///
/// Thread: main.
class MicrophoneChoices : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Each has a `text` for the user and a `value` of AppSettings::microphoneID. The value of the first is empty, for
    /// the system's default.
    Q_PROPERTY(QVariantList choices READ choices NOTIFY changed)

public:
    /// For QML; uses the audio server of the page.
    explicit MicrophoneChoices(QObject* parent = nullptr);
    /// The audio server outlives the object.
    explicit MicrophoneChoices(AudioServer& server, QObject* parent = nullptr);

    QVariantList choices() const;
    /// Lists the devices again, without waiting.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void changed();

private:
    void setDevices(const QList<MicrophoneInfo>& devices);

    AudioServer& m_server;
    QList<MicrophoneInfo> m_devices;
};

} // namespace quelto
