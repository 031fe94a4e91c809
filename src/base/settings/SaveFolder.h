// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The folder "Quelto" in the user's videos folder. Ends the program if the user has no videos folder.
QString defaultSaveFolder();

/// The absolute path of a save folder as a user may write it: a relative path, with or without "~/", counts from the
/// home folder, so that the folder the program was started in has no effect; an empty one is the default folder. Has no
/// double slashes, and none at its end unless it is the root.
QString absoluteSaveFolder(const QString& folder);

} // namespace quelto
