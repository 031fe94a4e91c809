// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/mux/Mp4Writer.h"

extern "C" {
#include <libavutil/mathematics.h>
}

#include <deque>
#include <limits>

namespace quelto {

namespace {

constexpr int VideoTicksPerSecond = Mp4Muxer::videoTicksPerSecond;
constexpr int AudioTicksPerSecond = Mp4Muxer::audioTicksPerSecond;
constexpr int FramesPerPacket = Mp4Muxer::framesPerAudioPacket;
// Video and audio are interleaved in runs of this length, so that a player finds both close together.
constexpr std::int64_t RunsPerSecond = 2;
constexpr std::int64_t TicksPerRun = VideoTicksPerSecond / RunsPerSecond;
constexpr std::int64_t AudioTicksPerRun = AudioTicksPerSecond / RunsPerSecond;

std::int64_t ticksFromStart(HostTime time, HostTime start)
{
    std::int64_t span = 0;
    if (__builtin_sub_overflow(time.time_since_epoch().count(), start.time_since_epoch().count(), &span)) {
        return 0;
    }
    return av_rescale(span, VideoTicksPerSecond, HostClock::period::den);
}

/// A sample with its track time. Times that do not increase are moved up by a tick, since MP4 cannot store them.
struct TimedSample {
    EncodedFramePtr sample;
    std::int64_t time = 0;
};

/// Leaves out empty and oversized samples.
std::deque<TimedSample> timedSamples(Mp4Movie& movie)
{
    std::deque<TimedSample> timed;
    const auto end = ticksFromStart(movie.end, movie.start);
    for (auto& sample : std::exchange(movie.video, {})) {
        if (!sample || sample->data.empty() || sample->data.size() > std::numeric_limits<int>::max()) {
            continue;
        }
        const auto minTime = timed.empty() ? 0 : timed.back().time + 1;
        const auto time = std::max(minTime, std::min(ticksFromStart(sample->presentationTime, movie.start), end));
        timed.push_back({std::move(sample), time});
    }
    return timed;
}

/// An upper bound of the index size: the maximum size of all entries and of the boxes around them.
std::int64_t maxIndexBytes(const std::deque<TimedSample>& video, const Mp4Movie& movie)
{
    constexpr std::int64_t MaxBoxBytesPerTrack = 2048;
    constexpr std::int64_t BytesPerChunk = 8 + 12; // co64, stsc
    std::int64_t dataBytes = 0;
    for (const auto& [sample, time] : video) {
        dataBytes += static_cast<std::int64_t>(sample->data.size());
    }
    const auto runs = ticksFromStart(movie.end, movie.start) / TicksPerRun + 2;
    // Two consecutive chunks of one run together exceed the maximum size of one.
    auto chunks = runs + 2 * dataBytes / Mp4Muxer::maxChunkBytes + 1;
    auto bytes = MaxBoxBytesPerTrack + static_cast<std::int64_t>(video.front().sample->format->parameterSets.size()) +
        static_cast<std::int64_t>(video.size()) * (8 + 4 + 4); // stts, stsz, stss
    for (const auto& track : movie.audio) {
        const auto packets = (track.frames + track.format.encoderDelay) / FramesPerPacket + 2;
        bytes += MaxBoxBytesPerTrack + static_cast<std::int64_t>(track.format.decoderConfiguration.size()) +
            packets * (4 + 8);
        chunks += runs + packets * FramesPerPacket / AudioTicksPerSecond + 1;
    }
    return MaxBoxBytesPerTrack + bytes + chunks * BytesPerChunk;
}

class Writer {
public:
    Writer(Mp4Movie movie, AtomicFile& file)
        : m_movie(std::move(movie))
        , m_video(timedSamples(m_movie))
        , m_muxer(file, videoTrackOf(m_video), audioTracksOf(m_movie))
    {
        for (const auto& track : m_movie.audio) {
            m_nextFrame.push_back(-track.format.encoderDelay);
        }
    }

    void write()
    {
        m_muxer.begin(maxIndexBytes(m_video, m_movie));
        const auto runs = ticksFromStart(m_movie.end, m_movie.start) / TicksPerRun + 1;
        for (std::int64_t run = 1; run <= runs; ++run) {
            const bool isLast = run == runs;
            while (!m_video.empty() && (isLast || m_video.front().time < run * TicksPerRun)) {
                writeNextSample();
            }
            for (std::size_t i = 0; i < m_movie.audio.size(); ++i) {
                writeAudioUpTo(
                    i, isLast ? m_movie.audio[i].frames : std::min(run * AudioTicksPerRun, m_movie.audio[i].frames));
            }
        }
        m_muxer.finish();
    }

private:
    static Mp4VideoTrack videoTrackOf(const std::deque<TimedSample>& video)
    {
        if (video.empty() || !video.front().sample->format) {
            // The muxer rejects a track without parameter sets.
            return {};
        }
        const auto& format = *video.front().sample->format;
        return {.codec = format.codec, .size = format.size, .parameterSets = format.parameterSets};
    }

    static std::vector<Mp4AudioTrack> audioTracksOf(const Mp4Movie& movie)
    {
        std::vector<Mp4AudioTrack> tracks;
        for (const auto& track : movie.audio) {
            tracks.push_back(track.format);
        }
        return tracks;
    }

    void writeNextSample()
    {
        const auto [sample, time] = std::move(m_video.front());
        m_video.pop_front();
        const auto next = m_video.empty() ? ticksFromStart(m_movie.end, m_movie.start) : m_video.front().time;
        m_muxer.write(0,
                      {.data = sample->data,
                       .presentationTime = time,
                       .decodingTime = time,
                       .duration = std::max<std::int64_t>(next - time, 1),
                       .isSync = sample->isKeyframe()});
    }

    void writeAudioUpTo(std::size_t index, std::int64_t frame)
    {
        const auto& track = m_movie.audio[index];
        auto& next = m_nextFrame[index];
        while (next < frame) {
            const auto packet = track.packets->next();
            if (!packet) {
                next = track.frames;
                return;
            }
            // The last packet is shortened to the end of the track, so that all tracks end together.
            m_muxer.write(static_cast<int>(index) + 1,
                          {.data = *packet,
                           .presentationTime = next,
                           .decodingTime = next,
                           .duration = std::min<std::int64_t>(FramesPerPacket, track.frames - next)});
            next += FramesPerPacket;
        }
    }

    Mp4Movie m_movie;
    /// Those that are not written yet.
    std::deque<TimedSample> m_video;
    Mp4Muxer m_muxer;
    std::vector<std::int64_t> m_nextFrame;
};

} // namespace

void writeMp4(Mp4Movie movie, AtomicFile& file)
{
    Writer(std::move(movie), file).write();
}

} // namespace quelto
