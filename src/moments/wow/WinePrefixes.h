// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <vector>

namespace quelto {

/// The "World of Warcraft" folders in the usual locations of all Wine prefixes under the home folder, created by Wine,
/// Lutris, Steam's Proton, Bottles or Faugus.
///
/// Returns canonical paths of existing folders without duplicates, even if several symbolic links lead to one.
///
/// Thread: any. Reads the disk on each call, which can take milliseconds with many prefixes.
std::vector<std::filesystem::path> gameFoldersInPrefixes(const std::filesystem::path& homeFolder);

} // namespace quelto
