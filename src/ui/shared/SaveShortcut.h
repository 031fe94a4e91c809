// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The global shortcut that saves a clip, as text for QML.
///
/// Thread: main.
class SaveShortcut : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString text READ text NOTIFY textChanged)

public:
    explicit SaveShortcut(QObject* parent = nullptr);

    static QString text();

Q_SIGNALS:
    void textChanged();
};

} // namespace quelto
