// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/theme/Theme.h"

namespace quelto {

/// Gives the title bar the colours of the theme where Qt draws it: in Wayland sessions whose desktop leaves title bars
/// to the programs, such as GNOME. It would otherwise be white. Call before the window is shown; while it is shown, its
/// title bar keeps its colours.
///
/// Thread: main.
void setTitleBarColors(const Theme& theme);

} // namespace quelto
