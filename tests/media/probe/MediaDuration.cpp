// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/MediaDuration.h"

#include "media/ffmpeg/Handles.h"

#include <QFile>

namespace quelto {

std::optional<double> mediaDuration(const QString& path)
{
    ffmpeg::keepQuiet();
    AVFormatContext* opened = nullptr;
    // The scheme keeps a path that looks like an address from being taken for one.
    const QByteArray address = QByteArrayLiteral("file:") + QFile::encodeName(path);
    if (avformat_open_input(&opened, address.constData(), nullptr, nullptr) < 0) {
        return std::nullopt;
    }
    const ffmpeg::InputContext input(opened);
    std::optional<double> sound;
    for (unsigned i = 0; i < input->nb_streams; ++i) {
        const auto* stream = input->streams[i];
        if (stream->duration == AV_NOPTS_VALUE || stream->duration <= 0) {
            continue;
        }
        const auto seconds = static_cast<double>(stream->duration) * av_q2d(stream->time_base);
        if (stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
            return seconds;
        }
        if (!sound && stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            sound = seconds;
        }
    }
    if (!sound && input->duration > 0) {
        return static_cast<double>(input->duration) / AV_TIME_BASE;
    }
    return sound;
}

} // namespace quelto
