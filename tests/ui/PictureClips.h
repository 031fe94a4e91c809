// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto::test {

/// Fills the folder with twelve real clips of three days: automatic and manual ones, two of them upright.
void addTwelveClips(const QString& folder);

/// Fills the folder with so many real clips of three games, eight a day.
void addClips(const QString& folder, int count);

} // namespace quelto::test
