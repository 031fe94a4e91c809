// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The name under which players know a hero, from the game's own, such as "npc_dota_hero_zuus".
QString heroDisplayName(const QString& name);

} // namespace quelto
