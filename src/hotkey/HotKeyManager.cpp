// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/HotKeyManager.h"

namespace quelto {

HotKeyManager::HotKeyManager(AppSettings& settings, GlobalKey& key, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_key(key)
{
    m_key.onPressed = [this] {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (action) {
                    action();
                }
            },
            Qt::QueuedConnection);
    };
}

void HotKeyManager::registerKey(std::uint32_t keyCode, std::uint32_t modifiers)
{
    m_key.grab(keyCode, modifiers);
}

void HotKeyManager::registerFromSettings()
{
    registerKey(m_settings.hotkeyCode(), m_settings.hotkeyModifiers());
}

void HotKeyManager::followSettings()
{
    connect(&m_settings, &AppSettings::hotkeyCodeChanged, this, &HotKeyManager::registerFromSettings);
    connect(&m_settings, &AppSettings::hotkeyModifiersChanged, this, &HotKeyManager::registerFromSettings);
}

void HotKeyManager::unregister()
{
    m_key.release();
}

} // namespace quelto
