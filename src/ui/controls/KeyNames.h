// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Names of keys for QML, as they stand on a keyboard of the language of the moment.
class KeyNames : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// "Ctrl+O" is "Strg+O" in German.
    Q_INVOKABLE static QString of(const QString& shortcut);
};

} // namespace quelto
