// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Key names for QML in the current language.
class KeyNames : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The text for a shortcut in portable form: "Ctrl+O" gives "Strg+O" in German.
    Q_INVOKABLE static QString of(const QString& shortcut);
};

} // namespace quelto
