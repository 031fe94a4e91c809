// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/reader/VideoTrackReader.h"
#include "media/transcode/TranscodeJob.h"

namespace quelto {

/// A frame of a source at a time of the output.
struct FedFrame {
    /// Null for black, where a clip has no picture yet. Repeated frames share it.
    std::shared_ptr<AVFrame> frame;
    AVRational pixelAspect{0, 1};
    QTransform display;
    HostDuration time{};
};

/// Decodes the clips of a job and puts their frames on the timeline of the output. Times increase.
///
/// Errors: std::system_error, std::runtime_error with FFmpeg's text for a clip that cannot be read.
class FrameFeed {
public:
    FrameFeed(const TranscodeJob& job, std::stop_token stop);

    /// Nothing at the end.
    std::optional<FedFrame> next();

private:
    std::optional<FedFrame> nextKept();
    std::optional<FedFrame> nextAtConstantRate();
    bool openClip();
    void closeClip();
    void advance();
    FedFrame shown(HostDuration time) const;

    const TranscodeJob& m_job;
    std::stop_token m_stop;
    /// The clip that is read.
    std::size_t m_clip = 0;
    std::unique_ptr<VideoTrackReader> m_reader;
    /// Where the clip starts in the output.
    HostDuration m_clipStart{};
    /// The decoded frame, with its time in the movie, and the one after it.
    std::optional<TimedFrame> m_upcoming;
    std::shared_ptr<AVFrame> m_current;
    HostDuration m_currentTime{};
    std::int64_t m_tick = 0;
    std::optional<double> m_lastKept;
    /// Of the last kept frame, in the output: when it was fed last, and until when it is visible.
    HostDuration m_fedTime{};
    HostDuration m_visibleUntil{};
};

} // namespace quelto
