// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/filter/FrameComposer.h"
#include "media/filter/ImageOverlay.h"
#include "media/transcode/FrameFeed.h"

namespace quelto {

/// Draws the pictures of an output: the composed frame with its brightness and overlay. A frame that repeats is
/// composed once.
///
/// Errors: ffmpeg::FfmpegError, std::bad_alloc.
class FramePainter {
public:
    explicit FramePainter(const TranscodeVideo& video);

    ffmpeg::Frame paint(const FedFrame& frame);

private:
    const TranscodeVideo& m_video;
    FrameComposer m_composer;
    std::optional<ImageOverlay> m_overlay;
    /// What m_composed was made from.
    std::shared_ptr<AVFrame> m_source;
    ffmpeg::Frame m_composed;
};

} // namespace quelto
