// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/LoginItem.h"
#include "ui/shared/Navigation.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Whether Quelto starts when the user logs in: the desktop's own state, read when this object is created and after
/// each change. A change that fails is reported by a toast and leaves the state as it is.
///
/// Thread: main.
class LaunchAtLogin : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isOn READ isOn NOTIFY changed)
    /// Whether the state is being read or changed.
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)

public:
    explicit LaunchAtLogin(QObject* parent = nullptr);
    LaunchAtLogin(LoginItem& item, Navigation& navigation, QObject* parent = nullptr);

    bool isOn() const noexcept { return m_isOn; }
    bool isBusy() const noexcept { return m_isBusy; }

    /// Ignored while isBusy().
    Q_INVOKABLE void setOn(bool isOn);

Q_SIGNALS:
    void changed();

private:
    LoginItem::Reply beginRequest();

    LoginItem& m_item;
    Navigation& m_navigation;
    bool m_isOn = false;
    bool m_isBusy = false;
};

} // namespace quelto
