// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

#include <QByteArray>
#include <QSize>

namespace quelto {

/// GPU frames that a VA-API encoder reads from.
class VaapiUpload {
public:
    /// Opens the first render node that supports VA-API. Errors: ffmpeg::FfmpegError.
    explicit VaapiUpload(QSize size);

    AVBufferRef* device() const noexcept { return m_device.get(); }
    /// The path of the device.
    const QByteArray& renderNode() const noexcept { return m_renderNode; }
    AVBufferRef* frames() const noexcept { return m_frames.get(); }
    /// Copies an NV12 frame to GPU memory. Errors: ffmpeg::FfmpegError.
    ffmpeg::Frame upload(const AVFrame& input) const;

private:
    QByteArray m_renderNode;
    ffmpeg::BufferRef m_device;
    ffmpeg::BufferRef m_frames;
};

} // namespace quelto
