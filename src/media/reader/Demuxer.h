// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"
#include "media/ffmpeg/Handles.h"
#include "media/reader/Deadline.h"

#include <QString>

namespace quelto {

/// Opens an MP4 or QuickTime file for demuxing. The constructor reads the index only.
///
/// FFmpeg reads through a file descriptor of ours and cannot open anything itself: pipes and devices are rejected
/// instead of blocking, and a playlist with a clip's name is not followed.
///
/// Errors: std::system_error, ffmpeg::FfmpegError.
class Demuxer {
public:
    Demuxer(const QString& path, Deadline deadline);
    Demuxer(const Demuxer&) = delete;
    Demuxer& operator=(const Demuxer&) = delete;

    AVFormatContext& context() const noexcept { return *m_context; }
    const Deadline& deadline() const noexcept { return m_deadline; }
    /// The first video stream that is not cover art; null if there is none.
    AVStream* videoStream() const noexcept;
    /// In the order of the file.
    std::vector<AVStream*> audioStreams() const;
    /// 0 if unknown. Units: seconds.
    double duration() const noexcept;
    /// Throws if the file could not be read since it was opened. FFmpeg reports that like the end of the file. Errors:
    /// ffmpeg::FfmpegError.
    void requireNoReadError() const;
    /// The size of the file when it was opened. Units: bytes.
    std::int64_t size() const noexcept { return m_size; }

private:
    static int read(void* self, std::uint8_t* buffer, int size) noexcept;
    static std::int64_t seek(void* self, std::int64_t offset, int whence) noexcept;
    static int isInterrupted(void* self) noexcept;

    Deadline m_deadline;
    FileDescriptor m_file;
    std::int64_t m_position = 0;
    std::int64_t m_size = 0;
    /// An errno value.
    int m_readError = 0;
    ffmpeg::IoContext m_io;
    ffmpeg::InputContext m_context;
};

} // namespace quelto
