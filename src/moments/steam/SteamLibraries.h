// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace quelto {

/// The folders in which Steam keeps games ("steamapps" lies in each): for every Steam found under the home folder, be
/// it native, Debian's, a Flatpak or a Snap, the Steam folder itself and then the libraries that it knows of, in its
/// order.
///
/// Canonical absolute paths of folders that exist, so that one that is reached over several symbolic links comes once.
/// Thread: any. Reads the disk anew at each call.
QStringList steamLibraries(const QString& homeFolder);

} // namespace quelto
