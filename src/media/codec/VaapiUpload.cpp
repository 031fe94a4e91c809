// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/VaapiUpload.h"

#include "media/ffmpeg/FfmpegError.h"

extern "C" {
#include <libavutil/hwcontext.h>
}

#include <cerrno>
#include <unistd.h>

namespace quelto {

namespace {

constexpr int FirstRenderNode = 128;
constexpr int LastRenderNode = 143;
constexpr int PoolFrames = 8;

/// Returns the path of the device, too.
ffmpeg::BufferRef openDevice(QByteArray& renderNode)
{
    auto status = AVERROR(ENODEV);
    for (int node = FirstRenderNode; node <= LastRenderNode; ++node) {
        const QByteArray path = QByteArrayLiteral("/dev/dri/renderD") + QByteArray::number(node);
        if (::access(path.constData(), R_OK | W_OK) != 0) {
            continue;
        }
        AVBufferRef* device = nullptr;
        status = av_hwdevice_ctx_create(&device, AV_HWDEVICE_TYPE_VAAPI, path.constData(), nullptr, 0);
        if (status >= 0) {
            renderNode = path;
            return ffmpeg::BufferRef(device);
        }
    }
    throw ffmpeg::FfmpegError(status);
}

} // namespace

VaapiUpload::VaapiUpload(QSize size)
    : m_device(openDevice(m_renderNode))
    , m_frames(av_hwframe_ctx_alloc(m_device.get()))
{
    if (!m_frames) {
        throw std::bad_alloc();
    }
    auto* frames = static_cast<AVHWFramesContext*>(static_cast<void*>(m_frames->data));
    frames->format = AV_PIX_FMT_VAAPI;
    frames->sw_format = AV_PIX_FMT_NV12;
    frames->width = size.width();
    frames->height = size.height();
    frames->initial_pool_size = PoolFrames;
    ffmpeg::checked(av_hwframe_ctx_init(m_frames.get()));
}

ffmpeg::Frame VaapiUpload::upload(const AVFrame& input) const
{
    auto frame = ffmpeg::makeFrame();
    ffmpeg::checked(av_hwframe_get_buffer(m_frames.get(), frame.get(), 0));
    ffmpeg::checked(av_hwframe_transfer_data(frame.get(), &input, 0));
    ffmpeg::checked(av_frame_copy_props(frame.get(), &input));
    return frame;
}

} // namespace quelto
