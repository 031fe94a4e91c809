// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/ffmpeg/BlackFrame.h"

#include "media/ffmpeg/FfmpegError.h"

extern "C" {
#include <libavutil/imgutils.h>
}

#include <array>

namespace quelto {

ffmpeg::Frame blackFrame(QSize size)
{
    auto frame = ffmpeg::makeFrame();
    frame->format = AV_PIX_FMT_YUV420P;
    frame->width = size.width();
    frame->height = size.height();
    ffmpeg::checked(av_frame_get_buffer(frame.get(), 0));
    const std::array<std::ptrdiff_t, 4> strides{frame->linesize[0], frame->linesize[1], frame->linesize[2], 0};
    ffmpeg::checked(av_image_fill_black(frame->data, strides.data(), AV_PIX_FMT_YUV420P, AVCOL_RANGE_MPEG, size.width(),
                                        size.height()));
    return frame;
}

} // namespace quelto
