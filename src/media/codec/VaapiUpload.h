// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

#include <QSize>

namespace quelto {

/// The graphics card's picture memory that a VA-API encoder reads from.
class VaapiUpload {
public:
    /// Opens the first render node that VA-API works on. Errors: ffmpeg::FfmpegError.
    explicit VaapiUpload(QSize size);

    AVBufferRef* frames() const noexcept { return m_frames.get(); }
    /// Copies an NV12 picture over. Errors: ffmpeg::FfmpegError.
    ffmpeg::Frame uploaded(const AVFrame& picture) const;

private:
    ffmpeg::BufferRef m_device;
    ffmpeg::BufferRef m_frames;
};

} // namespace quelto
