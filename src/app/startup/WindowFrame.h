// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWindow>

namespace quelto {

/// Puts the window where it stood when the program last ran, as far as that place is still on a screen; without a saved
/// frame it is centred.
void restoreFrame(QWindow& window, const QString& settingsPath);

/// Remembers where the window stands.
void saveFrame(const QWindow& window, const QString& settingsPath);

} // namespace quelto
