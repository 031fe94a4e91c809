// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/ffmpeg/FfmpegError.h"

extern "C" {
#include <libavutil/error.h>
}

#include <array>
#include <string>

namespace quelto::ffmpeg {

namespace {

std::string errorText(int status)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(status, text.data(), text.size());
    return text.data();
}

} // namespace

FfmpegError::FfmpegError(int status)
    : std::runtime_error(errorText(status))
    , m_status(status)
{
}

int checked(int status)
{
    if (status < 0) {
        throw FfmpegError(status);
    }
    return status;
}

} // namespace quelto::ffmpeg
