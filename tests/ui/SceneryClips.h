// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto::test {

/// Adds nine realistic clips of two days to the folder: real game names, automatic clips of all tiers, manual clips.
/// Each shows a painted landscape.
void addSceneryClips(const QString& folder);

} // namespace quelto::test
