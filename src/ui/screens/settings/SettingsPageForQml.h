// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hotkey/HotKeyManager.h"
#include "moments/dota/DotaWatcher.h"
#include "moments/league/LeagueWatcher.h"
#include "moments/wow/WoWWatcher.h"
#include "platform/FolderDialog.h"
#include "platform/LoginItem.h"
#include "platform/Platform.h"
#include "ui/screens/settings/SettingsScroll.h"
#include "ui/shared/SharedForQml.h"

#include <optional>

/// Registers the objects that only the settings page uses in QML. Each instance is set before the first file loads.
namespace quelto {

// The bases of the watchers, for their properties.
struct GameWatcherForQml {
    Q_GADGET
    QML_FOREIGN(quelto::GameWatcher)
    QML_ANONYMOUS
};

struct MatchWatcherForQml {
    Q_GADGET
    QML_FOREIGN(quelto::MatchWatcher)
    QML_ANONYMOUS
};

struct LeagueWatcherForQml : SharedForQml<LeagueWatcher> {
    Q_GADGET
    QML_FOREIGN(quelto::LeagueWatcher)
    QML_NAMED_ELEMENT(LeagueWatcher)
    QML_SINGLETON
};

struct DotaWatcherForQml : SharedForQml<DotaWatcher> {
    Q_GADGET
    QML_FOREIGN(quelto::DotaWatcher)
    QML_NAMED_ELEMENT(DotaWatcher)
    QML_SINGLETON
};

struct WoWWatcherForQml : SharedForQml<WoWWatcher> {
    Q_GADGET
    QML_FOREIGN(quelto::WoWWatcher)
    QML_NAMED_ELEMENT(WoWWatcher)
    QML_SINGLETON
};

/// What the cards of the page use.
struct SettingsPageParts {
    AppSettings& settings;
    Platform& platform;
    HotKeyManager& hotKeys;
    SettingsScroll::Dependencies scroll;
    Navigation& navigation;
};

struct SettingsPageForQml {
    static inline std::optional<SettingsPageParts> instance;
};

} // namespace quelto
