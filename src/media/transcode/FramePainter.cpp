// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/transcode/FramePainter.h"

#include "media/ffmpeg/BlackFrame.h"
#include "media/ffmpeg/FfmpegError.h"
#include "media/filter/FrameBrightness.h"

#include <new>

namespace quelto {

FramePainter::FramePainter(const TranscodeVideo& video)
    : m_video(video)
    , m_composer(video.layout)
{
    if (video.overlay) {
        m_overlay.emplace(video.overlay->image, video.overlay->position);
    }
}

ffmpeg::Frame FramePainter::paint(const FedFrame& frame)
{
    if (!frame.frame) {
        m_composed = blackFrame(m_video.size);
    } else if (frame.frame != m_source) {
        m_composed = m_composer.compose(*frame.frame, frame.pixelAspect, frame.display);
    }
    m_source = frame.frame;

    ffmpeg::Frame picture(av_frame_clone(m_composed.get()));
    if (!picture) {
        throw std::bad_alloc();
    }
    const auto seconds = toSeconds(frame.time);
    const auto brightness = m_video.brightness ? m_video.brightness(seconds) : 1.0;
    const auto opacity = m_overlay ? m_video.overlay->opacity(seconds) : 0.0;
    if (brightness < 1 || opacity > 0) {
        ffmpeg::checked(av_frame_make_writable(picture.get()));
        applyBrightness(*picture, brightness);
    }
    if (opacity > 0) {
        m_overlay->blend(*picture, opacity);
    }
    // The encoder would take these from the source.
    picture->pict_type = AV_PICTURE_TYPE_NONE;
    return picture;
}

} // namespace quelto
