// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "platform/GlobalKey.h"

#include <functional>

namespace quelto {

/// Keeps the one global key combination that saves a clip registered, as the settings have it.
///
/// Thread: main.
class HotKeyManager : public QObject {
    Q_OBJECT

public:
    HotKeyManager(AppSettings& settings, GlobalKey& key, QObject* parent = nullptr);

    /// What the key does. Runs from the event loop, never from inside the display system's event handling.
    std::function<void()> action;

    /// Replaces an earlier registration. A combination that another program holds never fires, without a message.
    void registerKey(std::uint32_t keyCode, std::uint32_t modifiers);
    void registerFromSettings();
    /// From now on each change of the key or its modifiers takes effect at once.
    void followSettings();
    /// While the user records a new combination the old one must not fire.
    void unregister();

private:
    AppSettings& m_settings;
    GlobalKey& m_key;
};

} // namespace quelto
