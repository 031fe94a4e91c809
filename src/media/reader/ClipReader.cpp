// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ClipReader.h"

#include "media/filter/DisplayTransform.h"
#include "media/reader/Demuxer.h"
#include "media/reader/FrameExtractor.h"
#include "media/reader/FrameToImage.h"

#include <exception>

namespace quelto {

namespace {

constexpr int MaxThumbnailSide = 640;
constexpr double ThumbnailSecond = 1;
/// Below one second: the first frame of a clip is often black.
constexpr double Tolerance = 0.5;

double toSeconds(std::int64_t value, AVRational unit)
{
    return value == AV_NOPTS_VALUE || value <= 0 ? 0 : static_cast<double>(value) * av_q2d(unit);
}

/// Fragmented files may declare durations in their tracks only, and FFmpeg 7 does not report the file's own.
double durationOf(const AVFormatContext& context)
{
    auto duration = toSeconds(context.duration, av_get_time_base_q());
    if (duration > 0) {
        return duration;
    }
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        duration = std::max(duration, toSeconds(context.streams[i]->duration, context.streams[i]->time_base));
    }
    return duration;
}

void readMetadata(const AVStream& stream, ClipInfo& info)
{
    const auto width = stream.codecpar->width * pixelStretch(stream.sample_aspect_ratio);
    info.width = width <= INT_MAX ? static_cast<int>(width) : 0;
    info.height = stream.codecpar->height;
    if (stream.avg_frame_rate.num > 0 && stream.avg_frame_rate.den > 0) {
        info.fps = av_q2d(stream.avg_frame_rate);
    }
}

QImage readThumbnail(const Demuxer& demuxer, AVStream& stream, double duration)
{
    FrameExtractor extractor(demuxer, stream);
    const auto middle = duration / 2;
    const auto frame = extractor.frameAt(std::min(middle, ThumbnailSecond), middle < ThumbnailSecond ? 0 : Tolerance);
    if (!frame) {
        return {};
    }
    const auto aspect = av_guess_sample_aspect_ratio(&demuxer.context(), &stream, frame.get());
    return toImage(*frame, aspect, displayTransform(stream), MaxThumbnailSide);
}

} // namespace

ClipPreview readClip(const QString& path, const std::stop_token& stop, HostDuration timeLimit)
{
    ClipPreview preview;
    try {
        const Demuxer demuxer(path, Deadline(stop, timeLimit));
        preview.info.duration = durationOf(demuxer.context());
        if (auto* stream = demuxer.videoStream()) {
            readMetadata(*stream, preview.info);
            preview.thumbnail = readThumbnail(demuxer, *stream, preview.info.duration);
        }
    } catch (const std::exception&) {
        // Returns the results so far.
    }
    return preview;
}

} // namespace quelto
