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
        preview.info.duration = demuxer.duration();
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
