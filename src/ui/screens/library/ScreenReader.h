// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Sends the accessibility events that Qt does not send itself.
///
/// Thread: main.
class ScreenReader : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using Send = std::function<void(QAccessibleEvent* event)>;

    using QObject::QObject;

    /// Announces the item as focused although the surrounding list has the keyboard focus. Does nothing for null.
    Q_INVOKABLE void announceFocus(QQuickItem* item);

    /// Replaces the function that delivers the events.
    void setSend(Send send) { m_send = std::move(send); }

private:
    /// The default does nothing while no screen reader runs.
    Send m_send = &QAccessible::updateAccessibility;
};

} // namespace quelto
