// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/transcode/FramePainter.h"

#include "media/ffmpeg/BlackFrame.h"
#include "media/filter/FrameBrightness.h"

#include <new>

namespace quelto {

namespace {

/// A decoder may return a frame without a picture.
bool isUsable(const AVFrame& frame)
{
    return frame.width > 0 && frame.height > 0 && frame.format != AV_PIX_FMT_NONE;
}

} // namespace

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
    if (!frame.frame || !isUsable(*frame.frame)) {
        m_composed = blackFrame(m_video.size);
    } else if (frame.frame != m_source) {
        m_composed = m_composer.compose(*frame.frame, frame.pixelAspect, frame.display);
    }
    m_source = frame.frame;

    ffmpeg::Frame picture(av_frame_clone(m_composed.get()));
    if (!picture) {
        throw std::bad_alloc();
    }
    // Both copy a picture that is shared before they change it.
    if (m_video.brightness) {
        multiplyBrightness(*picture, m_video.brightness(toSeconds(frame.time)));
    }
    if (m_overlay) {
        m_overlay->drawOn(*picture, m_video.overlay->opacity(toSeconds(frame.time)));
    }
    // The encoder would take these from the source.
    picture->pict_type = AV_PICTURE_TYPE_NONE;
    return picture;
}

} // namespace quelto
