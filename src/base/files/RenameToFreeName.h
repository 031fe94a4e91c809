// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// Renames a file and fails with EEXIST instead of replacing one, also on file systems without an atomic
/// no-replace rename. Relative names are resolved against the folder, an open descriptor or AT_FDCWD. Returns an errno
/// value, 0 on success.
int renameToFreeName(int folder, const char* from, const char* to) noexcept;

} // namespace quelto
