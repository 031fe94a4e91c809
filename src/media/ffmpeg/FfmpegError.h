// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>

namespace quelto::ffmpeg {

/// A call of the codec libraries that failed; the text is theirs.
class FfmpegError : public std::runtime_error {
public:
    explicit FfmpegError(int status);
    int status() const noexcept { return m_status; }

private:
    int m_status;
};

/// Gives a good status back and throws for a bad one.
int checked(int status);

} // namespace quelto::ffmpeg
