// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class QQuickItem;

namespace quelto {

/// Tells screen readers what Qt does not tell them by itself.
///
/// Thread: main.
class ScreenReader : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using Tell = std::function<void(QAccessibleEvent* event)>;

    using QObject::QObject;

    /// The keyboard acts on that item now, though the focus is that of the list around it.
    Q_INVOKABLE void tellCurrent(QQuickItem* item);

    /// Whom it tells instead of the desktop's screen reader.
    void setListener(Tell listener) { m_tell = std::move(listener); }

private:
    /// Does nothing while no screen reader runs.
    Tell m_tell = &QAccessible::updateAccessibility;
};

} // namespace quelto
