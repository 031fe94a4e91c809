// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "platform/GlobalKey.h"

#include <functional>

namespace quelto {

/// Keeps the global key combination of the settings registered, and knows which keys save a clip: those of the
/// settings, or those that the desktop bound in their place.
///
/// Thread: main.
class HotKeyManager : public QObject {
    Q_OBJECT
    /// Whether a press arrives.
    Q_PROPERTY(quelto::GlobalKeyStates::Kind state READ state NOTIFY stateChanged)
    /// What the user can bind to a key in the settings of a desktop that reserves all keys.
    Q_PROPERTY(QString command READ command CONSTANT)
    /// The names of the keys that save a clip, and the same in one text. Empty if no keys do.
    Q_PROPERTY(QStringList keys READ keys NOTIFY keysChanged)
    Q_PROPERTY(QString text READ text NOTIFY keysChanged)
    /// The combination of the settings.
    Q_PROPERTY(QString preferredText READ preferredText NOTIFY keysChanged)
    /// Whether the desktop bound keys of its own choice.
    Q_PROPERTY(bool hasOtherKeys READ hasOtherKeys NOTIFY keysChanged)

public:
    /// Saves a clip, as the key does. Names the program by its path if a shell would not find it, or find another one.
    static QString command();

    HotKeyManager(AppSettings& settings, GlobalKey& key, QObject* parent = nullptr);

    /// Called when the key is pressed, from the event loop.
    std::function<void()> action;

    GlobalKey::State state() const { return m_key.state(); }
    /// While the desktop has not answered, and while a new combination is recorded, these are the last ones.
    QStringList keys() const;
    QString text() const { return keys().join(u'+'); }
    QString preferredText() const;
    bool hasOtherKeys() const;
    /// The name of a key in the present layout.
    QString keyName(std::uint32_t keyCode);
    /// The modifier keys that are down now.
    std::uint32_t heldModifiers() { return m_key.heldModifiers(); }

    /// Replaces the previous registration. A combination that another program holds never fires; state() tells it.
    void registerKey(std::uint32_t keyCode, std::uint32_t modifiers);
    void registerFromSettings();
    /// From now on, registers the combination again whenever it changes, except after unregister().
    void followSettings();
    /// Used while the user records a new combination, so that the old one does not fire.
    void unregister();

Q_SIGNALS:
    void stateChanged();
    void keysChanged();

private:
    void followChange();
    void followState();
    QStringList preferredKeys() const;

    AppSettings& m_settings;
    GlobalKey& m_key;
    bool m_isUnregistered = false;
    /// What the key was when it was last registered.
    bool m_isReserved = false;
    QString m_boundText;
};

} // namespace quelto
