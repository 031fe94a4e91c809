// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/LaunchAtLogin.h"

#include "base/language/T.h"
#include "ui/screens/settings/SettingsPageForQml.h"

#include <QPointer>

namespace quelto {

LaunchAtLogin::LaunchAtLogin(QObject* parent)
    : LaunchAtLogin(*SettingsPageForQml::instance.value().platform.loginItem,
                    SettingsPageForQml::instance.value().navigation, parent)
{
}

LaunchAtLogin::LaunchAtLogin(LoginItem& item, Navigation& navigation, QObject* parent)
    : QObject(parent)
    , m_item(item)
    , m_navigation(navigation)
{
    m_item.read(beginRequest());
}

void LaunchAtLogin::setOn(bool isOn)
{
    if (!m_isBusy) {
        m_item.setEnabled(isOn, beginRequest());
    }
}

LoginItem::Reply LaunchAtLogin::beginRequest()
{
    m_isBusy = true;
    Q_EMIT changed();
    // The navigation lives longer than the page: a failure is reported also when the page is gone.
    return [self = QPointer(this), &navigation = m_navigation](const LoginItem::Result& result) {
        if (!result.failure.isEmpty()) {
            navigation.showToast(T("Girişte başlat ayarlanamadı: {0}", result.failure));
        }
        if (auto* const object = self.data(); object != nullptr) {
            object->m_isOn = result.isEnabled;
            object->m_isBusy = false;
            Q_EMIT object->changed();
        }
    };
}

} // namespace quelto
