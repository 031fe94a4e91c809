// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "media/reader/StreamDecoder.h"

#include <QTransform>

#include <optional>

namespace quelto {

/// A decoded frame and the time at which it is shown, from the start of the movie.
struct TimedFrame {
    ffmpeg::Frame frame;
    HostDuration time;
};

/// Decodes the first video track of a movie file in the order of presentation.
///
/// Errors of the constructor: std::system_error, std::runtime_error with FFmpeg's text, also for a file without video.
class VideoTrackReader {
public:
    VideoTrackReader(const QString& path, const std::stop_token& stop);

    /// Of the frame, if the frame says nothing else.
    AVRational pixelAspect(AVFrame& frame) const;
    /// How to turn a frame for display.
    const QTransform& display() const noexcept { return m_display; }

    /// Continues with the frame that is shown at the time, or the first one.
    void seek(HostDuration time);
    /// The next frame; times increase. Nothing at the end, where data is missing, and after a stop request. Errors:
    /// ffmpeg::FfmpegError if the disk fails.
    std::optional<TimedFrame> next();

private:
    std::optional<TimedFrame> decode();

    Demuxer m_demuxer;
    StreamDecoder m_decoder;
    QTransform m_display;
    /// Frames that seek has decoded already, in order: at most two.
    std::vector<TimedFrame> m_ahead;
    std::optional<HostDuration> m_lastTime;
};

} // namespace quelto
