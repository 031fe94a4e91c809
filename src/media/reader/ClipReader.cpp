// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ClipReader.h"

#include "media/reader/InputFile.h"
#include "media/reader/StillDecoder.h"
#include "media/reader/StillImage.h"

#include <exception>

namespace quelto {

namespace {

constexpr int LongestSide = 640;
constexpr double LatestSecond = 1;
/// Half of what would do: a clip's first picture, a second before the wanted one, is often black.
constexpr double Tolerance = 0.5;

double secondsOf(std::int64_t value, AVRational unit)
{
    return value == AV_NOPTS_VALUE || value <= 0 ? 0 : static_cast<double>(value) * av_q2d(unit);
}

/// Movies in fragments leave the movie's own duration open.
double durationOf(const AVFormatContext& context)
{
    auto duration = secondsOf(context.duration, av_get_time_base_q());
    for (unsigned i = 0; duration <= 0 && i < context.nb_streams; ++i) {
        duration = std::max(duration, secondsOf(context.streams[i]->duration, context.streams[i]->time_base));
    }
    return duration;
}

void readTrackFacts(const AVStream& track, ClipInfo& facts)
{
    const auto aspect = track.sample_aspect_ratio;
    const auto stretch = aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1.0;
    const auto width = track.codecpar->width * stretch;
    facts.width = width <= INT_MAX ? static_cast<int>(width) : 0;
    facts.height = track.codecpar->height;
    if (track.avg_frame_rate.num > 0 && track.avg_frame_rate.den > 0) {
        facts.fps = av_q2d(track.avg_frame_rate);
    }
}

QImage readPicture(const InputFile& file, AVStream& track, double duration)
{
    StillDecoder decoder(file, track);
    const auto middle = duration / 2;
    const auto frame = decoder.pictureAt(std::min(middle, LatestSecond), middle < LatestSecond ? 0 : Tolerance);
    if (!frame) {
        return {};
    }
    const auto aspect = av_guess_sample_aspect_ratio(&file.context(), &track, frame.get());
    return stillImage(*frame, aspect, displayTransform(track), LongestSide);
}

} // namespace

ClipReader readClip(const QString& path, const std::stop_token& stop, HostDuration timeLimit)
{
    ClipReader reading;
    try {
        const InputFile file(path, Deadline(stop, timeLimit));
        reading.facts.duration = durationOf(file.context());
        if (auto* track = file.pictureTrack()) {
            readTrackFacts(*track, reading.facts);
            reading.picture = readPicture(file, *track, reading.facts.duration);
        }
    } catch (const std::exception&) {
        // What was learnt before stays.
    }
    return reading;
}

} // namespace quelto
