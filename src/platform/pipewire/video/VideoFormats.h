// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/RgbImage.h"
#include "platform/pipewire/video/DmaBufOffers.h"
#include "platform/pipewire/video/SpaObjects.h"

#include <optional>

namespace quelto::pipewire {

/// The format that a stream has agreed on with its source.
struct VideoFormat {
    QSize size;
    PixelOrder order = PixelOrder::bgrx;
    /// Buffers are DMA-BUFs if it has a value, shared memory otherwise.
    struct DmaBuf {
        /// As for DmaBufFormat.
        std::uint32_t format = 0;
        std::uint64_t modifier = 0;

        bool operator==(const DmaBuf&) const = default;
    };
    std::optional<DmaBuf> dmaBuf;

    bool operator==(const VideoFormat&) const = default;
};

/// The DRM_FORMAT_ values of DMA-BUFs that can be offered, the preferred one first.
std::vector<std::uint32_t> dmaBufPixelFormats();

/// Adds what a stream can take as EnumFormat objects in the order of preference: DMA-BUFs first, then shared memory.
///
/// maxFramesPerSecond: what to ask the source for. Compositors drop each frame that follows another more closely than
/// this rate has it, so a rate near that of the screen loses frames to jitter.
void addFormatOffers(SpaObjects& objects, const std::vector<DmaBufFormat>& dmaBufFormats, int maxFramesPerSecond);

/// Reads a Format object. Nothing if it is no format that was offered, or not final: the source then still has to
/// choose among the modifiers.
std::optional<VideoFormat> parseVideoFormat(const spa_pod* object);

/// Adds what a stream needs of its buffers of the format: their number, their type of memory, and a header with the
/// time.
void addBufferRequests(SpaObjects& objects, const VideoFormat& format);

} // namespace quelto::pipewire
