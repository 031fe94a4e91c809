// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>

namespace quelto::ffmpeg {

/// A failed FFmpeg call. The text is FFmpeg's.
class FfmpegError : public std::runtime_error {
public:
    explicit FfmpegError(int status);
    int status() const noexcept { return m_status; }

private:
    int m_status;
};

/// Returns a non-negative status; throws FfmpegError for a negative one.
int checked(int status);

} // namespace quelto::ffmpeg
