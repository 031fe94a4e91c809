// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace quelto {

/// The folders that hold a "steamapps" folder with games. For each Steam installation under the home folder (native,
/// Debian package, Flatpak, Snap), lists the Steam folder itself, then its libraries in the order of Steam's own list.
///
/// Returns canonical absolute paths of existing folders without duplicates, even if several symbolic links lead to one.
///
/// Thread: any. Reads the disk on each call.
QStringList steamLibraries(const QString& homeFolder);

} // namespace quelto
