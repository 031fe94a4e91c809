// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/VaapiImport.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/types/DrmFormat.h"

extern "C" {
#include <libavutil/hwcontext.h>
#include <libavutil/hwcontext_drm.h>
}

#include <cerrno>
#include <string>

#include <unistd.h>

namespace quelto {

namespace {

struct NamedFormat {
    std::uint32_t drm;
    AVPixelFormat ffmpeg;
};
/// DRM names the channels from the highest bit down, FFmpeg by their order in memory.
constexpr std::array ImportedFormats{
    NamedFormat{drm::Xrgb8888, AV_PIX_FMT_BGR0},
    NamedFormat{drm::Argb8888, AV_PIX_FMT_BGRA},
    NamedFormat{drm::Xbgr8888, AV_PIX_FMT_RGB0},
    NamedFormat{drm::Abgr8888, AV_PIX_FMT_RGBA},
};

AVPixelFormat pixelFormatOf(std::uint32_t drm)
{
    const auto* found = std::ranges::find(ImportedFormats, drm, &NamedFormat::drm);
    return found == ImportedFormats.end() ? throw ffmpeg::FfmpegError(AVERROR(EINVAL)) : found->ffmpeg;
}

ffmpeg::BufferRef owned(AVBufferRef* buffer, int status)
{
    ffmpeg::checked(status);
    return ffmpeg::BufferRef(buffer);
}

void freeDescriptor(void* /*opaque*/, std::uint8_t* descriptor)
{
    const std::unique_ptr<AVDRMFrameDescriptor> freed(reinterpret_cast<AVDRMFrameDescriptor*>(descriptor));
}

/// Drivers import whole buffers. Units: bytes.
std::size_t bufferSize(int descriptor)
{
    const auto end = lseek(descriptor, 0, SEEK_END);
    return end < 0 ? 0 : static_cast<std::size_t>(end);
}

} // namespace

VaapiImport::VaapiImport(const VaapiUpload& target, QSize outputSize)
    : m_target(target)
    , m_outputSize(outputSize)
{
    AVBufferRef* device = nullptr;
    const int status =
        av_hwdevice_ctx_create(&device, AV_HWDEVICE_TYPE_DRM, target.renderNode().constData(), nullptr, 0);
    m_drmDevice = owned(device, status);
}

ffmpeg::Frame VaapiImport::import(const DmaBufImage& image)
{
    prepareFor(image);
    const auto mapped = map(*describe(image));
    if (!m_scaler) {
        m_scaler.emplace(*mapped,
                         "scale_vaapi=w=" + std::to_string(m_outputSize.width()) +
                             ":h=" + std::to_string(m_outputSize.height()) +
                             ":format=nv12:out_color_matrix=bt709:out_range=limited");
    }
    m_scaler->push(*mapped);
    auto frame = m_scaler->tryPull();
    if (!frame) {
        throw ffmpeg::FfmpegError(AVERROR(EIO));
    }
    return frame;
}

void VaapiImport::prepareFor(const DmaBufImage& image)
{
    if (m_mappedFrames && image.size == m_size && image.format == m_format) {
        return;
    }
    m_scaler.reset();
    m_drmFrames.reset(av_hwframe_ctx_alloc(m_drmDevice.get()));
    if (!m_drmFrames) {
        throw std::bad_alloc();
    }
    auto* frames = static_cast<AVHWFramesContext*>(static_cast<void*>(m_drmFrames->data));
    frames->format = AV_PIX_FMT_DRM_PRIME;
    frames->sw_format = pixelFormatOf(image.format);
    frames->width = image.size.width();
    frames->height = image.size.height();
    ffmpeg::checked(av_hwframe_ctx_init(m_drmFrames.get()));
    AVBufferRef* mapped = nullptr;
    const int status = av_hwframe_ctx_create_derived(&mapped, AV_PIX_FMT_VAAPI, m_target.device(), m_drmFrames.get(),
                                                     AV_HWFRAME_MAP_READ);
    m_mappedFrames = owned(mapped, status);
    m_size = image.size;
    m_format = image.format;
}

ffmpeg::Frame VaapiImport::describe(const DmaBufImage& image) const
{
    if (image.planes.empty() || image.planes.size() > AV_DRM_MAX_PLANES) {
        throw ffmpeg::FfmpegError(AVERROR(EINVAL));
    }
    auto description = std::make_unique<AVDRMFrameDescriptor>();
    description->nb_layers = 1;
    auto& layer = description->layers[0];
    layer.format = image.format;
    layer.nb_planes = static_cast<int>(image.planes.size());
    description->nb_objects = layer.nb_planes;
    for (int index = 0; index < layer.nb_planes; ++index) {
        const auto& plane = image.planes[static_cast<std::size_t>(index)];
        description->objects[index] = {
            .fd = plane.descriptor, .size = bufferSize(plane.descriptor), .format_modifier = image.modifier};
        layer.planes[index] = {.object_index = index, .offset = plane.offset, .pitch = plane.stride};
    }
    auto frame = ffmpeg::makeFrame();
    frame->format = AV_PIX_FMT_DRM_PRIME;
    frame->width = image.size.width();
    frame->height = image.size.height();
    frame->hw_frames_ctx = av_buffer_ref(m_drmFrames.get());
    auto* bytes = reinterpret_cast<std::uint8_t*>(description.get());
    frame->buf[0] = av_buffer_create(bytes, sizeof(AVDRMFrameDescriptor), freeDescriptor, nullptr, 0);
    if (!frame->hw_frames_ctx || !frame->buf[0]) {
        throw std::bad_alloc();
    }
    frame->data[0] = bytes;
    // The buffer owns it from here on.
    static_cast<void>(description.release());
    return frame;
}

ffmpeg::Frame VaapiImport::map(const AVFrame& described) const
{
    auto frame = ffmpeg::makeFrame();
    frame->format = AV_PIX_FMT_VAAPI;
    frame->hw_frames_ctx = av_buffer_ref(m_mappedFrames.get());
    if (!frame->hw_frames_ctx) {
        throw std::bad_alloc();
    }
    ffmpeg::checked(av_hwframe_map(frame.get(), &described, AV_HWFRAME_MAP_READ | AV_HWFRAME_MAP_DIRECT));
    frame->width = described.width;
    frame->height = described.height;
    frame->colorspace = AVCOL_SPC_RGB;
    frame->color_range = AVCOL_RANGE_JPEG;
    return frame;
}

} // namespace quelto
