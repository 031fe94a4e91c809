// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "platform/GlobalKey.h"

#include <functional>

namespace quelto {

/// Keeps the global key combination of the settings registered.
///
/// Thread: main.
class HotKeyManager : public QObject {
    Q_OBJECT

public:
    HotKeyManager(AppSettings& settings, GlobalKey& key, QObject* parent = nullptr);

    /// Called when the key is pressed, from the event loop.
    std::function<void()> action;

    /// Replaces the previous registration. A combination that another program holds never fires; no error is reported.
    void registerKey(std::uint32_t keyCode, std::uint32_t modifiers);
    void registerFromSettings();
    /// From now on, registers the combination again whenever it changes.
    void followSettings();
    /// Used while the user records a new combination, so that the old one does not fire.
    void unregister();

private:
    AppSettings& m_settings;
    GlobalKey& m_key;
};

} // namespace quelto
