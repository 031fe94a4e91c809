// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto::test {

/// Writes twelve playable clips of three days to the folder: automatic and manual ones, two of them upright.
void addTwelveClips(const QString& folder);

/// Writes `count` playable clips of three games to the folder, eight per day.
void addClips(const QString& folder, int count);

} // namespace quelto::test
