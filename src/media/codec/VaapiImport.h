// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/VaapiUpload.h"
#include "media/filter/FilterGraph.h"
#include "media/types/VideoFrame.h"

#include <optional>

namespace quelto {

/// Turns pictures in memory of the GPU into frames for a VA-API encoder, without a copy to this process: scaled, in
/// NV12, BT.709 and video range.
///
/// Thread: one at a time.
class VaapiImport {
public:
    /// `target` is that of the encoder, and must outlive this object.
    VaapiImport(const VaapiUpload& target, QSize outputSize);

    /// The picture is read when the encoder has read the frame. Errors: ffmpeg::FfmpegError if the driver cannot read
    /// this layout; std::bad_alloc.
    ffmpeg::Frame import(const DmaBufImage& image);

private:
    void prepareFor(const DmaBufImage& image);
    ffmpeg::Frame describe(const DmaBufImage& image) const;
    ffmpeg::Frame map(const AVFrame& described) const;

    const VaapiUpload& m_target;
    QSize m_outputSize;
    ffmpeg::BufferRef m_drmDevice;
    // For pictures of the last size and format.
    QSize m_size;
    std::uint32_t m_format = 0;
    ffmpeg::BufferRef m_drmFrames;
    ffmpeg::BufferRef m_mappedFrames;
    std::optional<FilterGraph> m_scaler;
};

} // namespace quelto
