// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"
#include "media/reader/Deadline.h"

#include <QFile>

namespace quelto {

/// A movie file opened for reading: its index has been read, nothing more.
///
/// The library gets the bytes from a file that is already open, and no means to open anything: neither a pipe nor a
/// device can make it wait, and a play list under a movie's name leads nowhere.
///
/// Errors: std::system_error, ffmpeg::FfmpegError.
class InputFile {
public:
    InputFile(const QString& path, Deadline deadline);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    AVFormatContext& context() const noexcept { return *m_context; }
    const Deadline& deadline() const noexcept { return m_deadline; }
    /// The first one that is no cover; null without.
    AVStream* pictureTrack() const noexcept;

private:
    static int read(void* self, std::uint8_t* to, int size) noexcept;
    static std::int64_t seek(void* self, std::int64_t offset, int whence) noexcept;
    static int isInterrupted(void* self) noexcept;

    Deadline m_deadline;
    QFile m_file;
    std::int64_t m_position = 0;
    std::int64_t m_size = 0;
    ffmpeg::Io m_io;
    ffmpeg::InputContext m_context;
};

} // namespace quelto
