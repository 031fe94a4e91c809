// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/HotKeyManager.h"

#include "base/keys/HotKeyText.h"
#include "hotkey/BoundKeys.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

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
    m_key.onStateChanged = [this] { followState(); };
    connect(&settings, &AppSettings::hotkeyModifiersChanged, this, &HotKeyManager::keysChanged);
    connect(&settings, &AppSettings::hotkeyKeyNameChanged, this, &HotKeyManager::keysChanged);
    connect(&settings, &AppSettings::languageChanged, this, &HotKeyManager::keysChanged);
}

QString HotKeyManager::command()
{
    const auto program = QCoreApplication::applicationFilePath();
    const auto found = QFileInfo(QStandardPaths::findExecutable(QFileInfo(program).fileName())).canonicalFilePath();
    auto word = QFileInfo(program).fileName();
    if (found != QFileInfo(program).canonicalFilePath()) {
        word = program;
        if (word.contains(QRegularExpression(QStringLiteral("[^\\w@%+=:,./-]")))) {
            word = u'\'' + word.replace(u'\'', QStringLiteral("'\\''")) + u'\'';
        }
    }
    return word + QStringLiteral(" --save-clip");
}

void HotKeyManager::followState()
{
    if (m_key.state() != GlobalKey::State::Released) {
        m_isReserved = m_key.state() == GlobalKey::State::ReservedByDesktop;
        m_boundText = m_key.boundText();
        Q_EMIT keysChanged();
    }
    Q_EMIT stateChanged();
}

QStringList HotKeyManager::preferredKeys() const
{
    return hotKeyWords(m_settings.hotkeyModifiers(), m_settings.hotkeyKeyName());
}

QString HotKeyManager::preferredText() const
{
    return preferredKeys().join(u'+');
}

QStringList HotKeyManager::keys() const
{
    if (m_isReserved) {
        return {};
    }
    return m_boundText.isEmpty() ? preferredKeys() : boundKeyWords(m_boundText);
}

bool HotKeyManager::hasOtherKeys() const
{
    return !m_isReserved && !m_boundText.isEmpty() && text().compare(preferredText(), Qt::CaseInsensitive) != 0;
}

QString HotKeyManager::keyName(std::uint32_t keyCode)
{
    return hotKeyName(keyCode, m_key.characters(keyCode));
}

void HotKeyManager::registerKey(std::uint32_t keyCode, std::uint32_t modifiers)
{
    m_isUnregistered = false;
    m_key.grab(keyCode, modifiers);
}

void HotKeyManager::registerFromSettings()
{
    registerKey(m_settings.hotkeyCode(), m_settings.hotkeyModifiers());
}

void HotKeyManager::followSettings()
{
    connect(&m_settings, &AppSettings::hotkeyCodeChanged, this, &HotKeyManager::followChange);
    connect(&m_settings, &AppSettings::hotkeyModifiersChanged, this, &HotKeyManager::followChange);
}

void HotKeyManager::followChange()
{
    if (!m_isUnregistered) {
        registerFromSettings();
    }
}

void HotKeyManager::unregister()
{
    m_isUnregistered = true;
    m_key.release();
}

} // namespace quelto
