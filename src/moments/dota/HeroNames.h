// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The display name of a hero, from the game's internal name, such as "npc_dota_hero_zuus".
QString heroDisplayName(const QString& name);

} // namespace quelto
