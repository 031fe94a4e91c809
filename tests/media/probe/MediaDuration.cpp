// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/MediaDuration.h"

#include "media/ffmpeg/Handles.h"

#include <QFile>

namespace quelto {

std::optional<double> mediaDuration(const QString& path)
{
    ffmpeg::disableLogging();
    AVFormatContext* opened = nullptr;
    // With an explicit scheme, FFmpeg does not interpret a path that looks like a URL.
    const QByteArray url = QByteArrayLiteral("file:") + QFile::encodeName(path);
    if (avformat_open_input(&opened, url.constData(), nullptr, nullptr) < 0) {
        return std::nullopt;
    }
    const ffmpeg::InputContext input(opened);
    std::optional<double> audio;
    for (unsigned i = 0; i < input->nb_streams; ++i) {
        const auto* stream = input->streams[i];
        if (stream->duration == AV_NOPTS_VALUE || stream->duration <= 0) {
            continue;
        }
        const auto seconds = static_cast<double>(stream->duration) * av_q2d(stream->time_base);
        if (stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
            return seconds;
        }
        if (!audio && stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            audio = seconds;
        }
    }
    if (!audio && input->duration > 0) {
        return static_cast<double>(input->duration) / AV_TIME_BASE;
    }
    return audio;
}

} // namespace quelto
