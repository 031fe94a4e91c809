// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// A rename that fails with EEXIST instead of replacing a file, in every file system: not all of them know how to.
/// Relative names are below the folder, an open descriptor or AT_FDCWD. Gives an error number, 0 if all went well.
int renameToFreeName(int folder, const char* from, const char* to) noexcept;

} // namespace quelto
