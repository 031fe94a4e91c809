// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The display names of the games in moments, clip names and settings.
namespace quelto::gameNames {

inline const QString leagueOfLegends = QStringLiteral("League of Legends");
inline const QString dota2 = QStringLiteral("Dota 2");
inline const QString worldOfWarcraft = QStringLiteral("World of Warcraft");

} // namespace quelto::gameNames
