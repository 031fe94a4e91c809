// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/SoundSettings.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The desktop's sound settings, for QML.
///
/// Thread: main.
class SoundSettingsForQml : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(SoundSettings)
    QML_SINGLETON
    Q_PROPERTY(bool isAvailable READ isAvailable CONSTANT)

public:
    /// Uses the platform of the page.
    explicit SoundSettingsForQml(QObject* parent = nullptr);

    /// Whether the desktop has a program for them.
    bool isAvailable() const { return m_settings != nullptr && m_settings->isAvailable(); }
    Q_INVOKABLE void open() { m_settings->open(); }

private:
    SoundSettings* m_settings;
};

} // namespace quelto
