// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <vector>

namespace quelto {

/// The folders "World of Warcraft" in the usual places of every Wine prefix under the home folder, whichever tool made
/// the prefix: plain Wine, Lutris, Steam's Proton, Bottles or Faugus.
///
/// Canonical paths of folders that exist, so that one that is reached over several symbolic links comes once.
/// Thread: any. Reads the disk anew at each call, which may take milliseconds where there are many prefixes.
std::vector<std::filesystem::path> gameFoldersInPrefixes(const std::filesystem::path& homeFolder);

} // namespace quelto
