// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "platform/pipewire/video/VideoFormats.h"

#include <spa/buffer/buffer.h>

namespace quelto::pipewire {

/// The picture that the source has put into the buffer, with null pixels if it is a DMA-BUF. Nothing if there is none
/// that can be used; the buffer may tell of the pointer only.
///
/// The source can change the description of the picture at any time. Offset and stride are read once and checked, so a
/// second call may return something else.
std::optional<RgbImage> readPicture(const spa_buffer& buffer, const VideoFormat& format);

/// When the screen showed the picture. That is the time that the source gives; without a plausible one it is the time
/// at which the buffer arrived.
HostTime presentationTimeOf(const spa_buffer& buffer, HostTime arrival);

} // namespace quelto::pipewire
