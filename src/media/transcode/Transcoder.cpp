// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/transcode/Transcoder.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/transcode/MovieSink.h"
#include "media/transcode/PaintedFrames.h"

#include <QTemporaryDir>

namespace quelto {

namespace {

/// The part of the time that the first of two passes takes. It only estimates the work.
constexpr double FirstPassShare = 0.4;

/// A part of the progress of the whole.
struct Share {
    double begin = 0;
    double end = 1;
};

class Transcoder {
public:
    Transcoder(const TranscodeJob& job, AtomicFile& file, const TranscodeOptions& options)
        : m_job(job)
        , m_file(file)
        , m_options(options)
        , m_length(lengthOf(job.clips))
    {
    }

    void run()
    {
        const auto request = encoderRequest();
        if (!request.bitsPerSecond || !tryTwoPasses(request)) {
            runOnly(request, {});
        }
    }

private:
    ExportEncoderRequest encoderRequest() const
    {
        const auto& video = m_job.video;
        return {.size = video.size,
                .framesPerSecond = video.framesPerSecond,
                .maxKeyFrameInterval = video.maxKeyFrameInterval,
                .bitsPerSecond = video.bitsPerSecond,
                .choice = m_options.encoder};
    }

    /// False if there is no room for the statistics of the first pass. One pass has to do then.
    bool tryTwoPasses(ExportEncoderRequest request)
    {
        const QTemporaryDir statistics;
        if (!statistics.isValid()) {
            return false;
        }
        request.statisticsFile = statistics.filePath(QStringLiteral("statistics"));
        request.pass = EncoderPass::first;
        bool needsSecond = false;
        try {
            needsSecond = runFirst(request);
        } catch (const HardwareEncoderError&) {
            throw;
        } catch (const EncoderError&) {
            return false;
        }
        if (needsSecond) {
            request.pass = EncoderPass::second;
            runOnly(request, {.begin = FirstPassShare});
        }
        return true;
    }

    /// Analyses the video for the second pass. False if the encoder needs no second pass, and the file is complete.
    bool runFirst(const ExportEncoderRequest& request)
    {
        std::unique_ptr<MovieSink> sink;
        const auto encoder = m_options.openEncoder(request, [&sink](const AVPacket& packet) {
            if (sink) {
                sink->write(packet);
            }
        });
        if (encoder->kind() == EncoderKind::hardware) {
            sink = std::make_unique<MovieSink>(m_job, encoder->parameterSets(), m_file, m_options.stop);
            encodeAll(*encoder, sink.get(), {});
            sink->finish();
            return false;
        }
        m_maxFrames = encodeAll(*encoder, nullptr, {.end = FirstPassShare});
        return true;
    }

    void runOnly(const ExportEncoderRequest& request, Share share)
    {
        std::unique_ptr<MovieSink> sink;
        const auto encoder = m_options.openEncoder(request, [&sink](const AVPacket& packet) { sink->write(packet); });
        sink = std::make_unique<MovieSink>(m_job, encoder->parameterSets(), m_file, m_options.stop);
        encodeAll(*encoder, sink.get(), share);
        sink->finish();
    }

    /// Returns the number of frames.
    std::int64_t encodeAll(ExportEncoder& encoder, MovieSink* sink, Share share)
    {
        PaintedFrames frames(m_job, m_options.stop);
        std::optional<std::int64_t> lastTime;
        std::int64_t count = 0;
        try {
            for (; count < m_maxFrames; ++count) {
                const auto frame = frames.next();
                if (!frame) {
                    break;
                }
                throwIfStopped();
                const auto time = std::max(std::llround(toSeconds(frame->time) * ExportEncoder::ticksPerSecond),
                                           lastTime ? *lastTime + 1 : 0LL);
                frame->picture->pts = time;
                lastTime = time;
                if (sink != nullptr) {
                    sink->frameAt(time);
                }
                encoder.encode(*frame->picture);
                report(share, frame->time);
            }
            throwIfStopped();
            if (!lastTime) {
                throw ffmpeg::FfmpegError(AVERROR_INVALIDDATA);
            }
            encoder.finish();
        } catch (const EncoderError& error) {
            if (encoder.kind() == EncoderKind::hardware) {
                throw HardwareEncoderError(error.status());
            }
            throw;
        }
        return count;
    }

    /// The readers end early when they notice a stop request.
    void throwIfStopped() const
    {
        if (m_options.stop.stop_requested()) {
            throw TranscodeStopped();
        }
    }

    void report(Share share, HostDuration time) const
    {
        if (m_options.progress) {
            const auto done = std::clamp(toSeconds(time) / toSeconds(m_length), 0.0, 1.0);
            m_options.progress(share.begin + (share.end - share.begin) * done);
        }
    }

    const TranscodeJob& m_job;
    AtomicFile& m_file;
    const TranscodeOptions& m_options;
    HostDuration m_length;
    /// Those of the first pass, in the second. A damaged file may give more when it is read again, and x264 crashes
    /// when it gets more than its statistics describe.
    std::int64_t m_maxFrames = std::numeric_limits<std::int64_t>::max();
};

} // namespace

void transcode(const TranscodeJob& job, AtomicFile& file, const TranscodeOptions& options)
{
    Transcoder(job, file, options).run();
}

} // namespace quelto
