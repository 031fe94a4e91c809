// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWindow>

namespace quelto {

/// Call when the user has clicked something of the program outside its windows, before the window is shown. A Wayland
/// compositor raises an open window only with an activation token, and some desktops send none with a click. Then hides
/// the window, so that it is opened again, in front. Does nothing if there is a token, or the window is in front.
///
/// Thread: main.
void prepareToRaise(QWindow& window);

} // namespace quelto
