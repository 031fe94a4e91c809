// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// Whether the machine has a graphics device: a kernel render node or one of NVIDIA's own driver. `devices` is the
/// folder of the device files.
bool hasGraphicsCard(const QString& devices);

/// Selects Qt's software renderer on machines without a graphics card, unless the user's environment chooses one.
/// OpenGL emulated by the processor redraws the whole window for each frame of a small animation, on all cores, and the
/// encoder would lose frames. Call before the first window is created.
void chooseRenderer();

} // namespace quelto
