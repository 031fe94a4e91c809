// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// Whether there is a device that draws: a render node of the kernel's, or one of NVIDIA's own driver.
///
/// `devices` is the folder of the device files.
bool hasGraphicsCard(const QString& devices);

/// Lets Qt draw windows by the processor where there is no graphics card, unless the user's environment chooses. OpenGL
/// without a card draws the whole window anew for each frame of a small movement, on every core, beside the encoder
/// that works there too: frames of the recording would be lost.
///
/// Before the first window.
void chooseRenderer();

} // namespace quelto
