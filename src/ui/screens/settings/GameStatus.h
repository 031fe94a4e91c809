// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/dota/DotaConfig.h"

#include <QString>

namespace quelto {

/// What the settings page says about one game.
struct GameStatus {
    QString text;
    /// What the user can do next, where the text does not say it.
    QString hint = {};

    bool operator==(const GameStatus&) const = default;
};

struct LeagueFacts {
    bool isInGame = false;
    QString champion = {};
};

struct DotaFacts {
    bool isInGame = false;
    QString hero = {};
    /// Empty if posts can be received.
    QString listenerError = {};
    DotaConfig::InstallState installState = DotaConfig::InstallState::NotFound;
};

struct WowFacts {
    bool isLogFound = false;
    bool isActive = false;
};

// In the current language.
GameStatus statusOf(const LeagueFacts& facts);
GameStatus statusOf(const DotaFacts& facts);
GameStatus statusOf(const WowFacts& facts);

} // namespace quelto
