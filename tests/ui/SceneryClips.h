// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto::test {

/// Fills the folder with clips of two days as a player has them: real game names, automatic clips of all tiers and
/// clips by hand, and a painted landscape as the picture of each.
void addSceneryClips(const QString& folder);

} // namespace quelto::test
