// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "platform/pipewire/video/VideoFormats.h"

#include <spa/buffer/buffer.h>

namespace quelto::pipewire {

/// Whether the source has put a picture into the buffer that can be used. A buffer without one may tell of the pointer
/// only.
bool hasPicture(const spa_buffer& buffer, const VideoFormat& format);

/// The pixels of a buffer in shared memory that has a picture.
RgbImage pixelsOf(const spa_buffer& buffer, const VideoFormat& format);

/// When the screen showed the picture. That is the time that the source gives; without a plausible one it is the time
/// at which the buffer arrived.
HostTime presentationTimeOf(const spa_buffer& buffer, HostTime arrival);

} // namespace quelto::pipewire
