// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Capitals for QML, as the language of the moment writes them.
class TextCase : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    Q_INVOKABLE static QString upper(const QString& text);
};

} // namespace quelto
