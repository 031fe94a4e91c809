// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Upper case for QML, by the rules of the current language.
class TextCase : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    Q_INVOKABLE static QString upper(const QString& text);
};

} // namespace quelto
