// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The global shortcut that saves a clip, for QML.
///
/// Thread: main.
class SaveShortcut : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The names of its keys, and the same in one text.
    Q_PROPERTY(QStringList keys READ keys NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)

public:
    explicit SaveShortcut(QObject* parent = nullptr);

    static QStringList keys();
    static QString text();

Q_SIGNALS:
    void changed();
};

} // namespace quelto
