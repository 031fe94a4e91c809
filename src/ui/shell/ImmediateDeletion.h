// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Deletes what QML otherwise deletes only when the event loop runs again.
class ImmediateDeletion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Must not be called from a handler of the object or of its children.
    Q_INVOKABLE static void of(QObject* object);
};

} // namespace quelto
