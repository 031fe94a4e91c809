// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/MovieInfo.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/filter/DisplayTransform.h"
#include "media/reader/StreamDecoder.h"

namespace quelto {

namespace {

/// A longer movie is a damaged one, and an export of it would never end. Units: seconds.
constexpr double MaxMovieLength = 24 * 3600.0;

double toSeconds(std::int64_t ticks, const AVStream& stream)
{
    return ticks == AV_NOPTS_VALUE ? 0 : static_cast<double>(ticks) * av_q2d(stream.time_base);
}

/// The median distance of two samples.
double frameRateOf(AVStream& stream)
{
    std::vector<std::int64_t> distances;
    const auto count = avformat_index_get_entries_count(&stream);
    for (int i = 1; i < count; ++i) {
        const auto distance =
            avformat_index_get_entry(&stream, i)->timestamp - avformat_index_get_entry(&stream, i - 1)->timestamp;
        if (distance > 0) {
            distances.push_back(distance);
        }
    }
    if (distances.empty()) {
        return stream.avg_frame_rate.num > 0 && stream.avg_frame_rate.den > 0 ? av_q2d(stream.avg_frame_rate) : 0;
    }
    const auto middle = distances.begin() + static_cast<std::ptrdiff_t>(distances.size() / 2);
    std::ranges::nth_element(distances, middle);
    return 1 / toSeconds(*middle, stream);
}

QSizeF displayedSize(const AVStream& stream, QSize picture, AVRational pixelAspect)
{
    const QSizeF size(picture.width() * pixelStretch(pixelAspect), picture.height());
    return isTransposed(displayTransform(stream)) ? size.transposed() : size;
}

/// Some files state the shape of their pixels only in the coded pictures, and fragmented ones no start.
MovieInfo::Video describe(const Demuxer& demuxer, AVStream& stream)
{
    MovieInfo::Video video{
        .size = displayedSize(stream, {stream.codecpar->width, stream.codecpar->height}, stream.sample_aspect_ratio),
        .frameRate = frameRateOf(stream),
        .start = toSeconds(stream.start_time, stream)};
    // FFmpeg sets it when it reads packets.
    const bool hasStart = stream.start_time != AV_NOPTS_VALUE;
    if (const auto frame = StreamDecoder(demuxer, stream, StreamDecoder::Threads::one).next()) {
        video.size = displayedSize(stream, {frame->width, frame->height},
                                   av_guess_sample_aspect_ratio(&demuxer.context(), &stream, frame.get()));
        if (!hasStart) {
            video.start = toSeconds(frame->best_effort_timestamp, stream);
        }
    }
    video.end = video.start + toSeconds(std::max<std::int64_t>(stream.duration, 0), stream);
    return video;
}

/// The time of the first sample whose data is not in the file.
double intactUntil(AVStream& stream, std::int64_t fileSize)
{
    auto first = std::numeric_limits<double>::infinity();
    const auto count = avformat_index_get_entries_count(&stream);
    for (int i = 0; i < count; ++i) {
        const auto* entry = avformat_index_get_entry(&stream, i);
        if (entry->pos + entry->size > fileSize) {
            first = std::min(first, toSeconds(entry->timestamp, stream));
        }
    }
    return first;
}

} // namespace

MovieInfo readMovieInfo(const QString& path, const std::stop_token& stop)
{
    const Demuxer demuxer(path, Deadline(stop));
    MovieInfo info;
    info.duration = demuxer.duration();
    if (auto* stream = demuxer.videoStream()) {
        info.intactUntil = intactUntil(*stream, demuxer.size());
    }
    for (auto* stream : demuxer.audioStreams()) {
        info.audio.push_back(
            {.isEnabled = (stream->disposition & AV_DISPOSITION_DEFAULT) != 0,
             .bitsPerSecond = static_cast<int>(std::clamp<std::int64_t>(stream->codecpar->bit_rate, 0, INT_MAX))});
        info.intactUntil = std::min(info.intactUntil, intactUntil(*stream, demuxer.size()));
    }
    if (auto* stream = demuxer.videoStream()) {
        info.video = describe(demuxer, *stream);
        info.duration = std::max(info.duration, info.video->end);
    }
    // Also false for a number that is not one.
    if (!(info.duration <= MaxMovieLength)) {
        throw ffmpeg::FfmpegError(AVERROR_INVALIDDATA);
    }
    return info;
}

} // namespace quelto
