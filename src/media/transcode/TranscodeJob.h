// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "media/types/FrameLayout.h"

#include <QImage>
#include <QString>

#include <exception>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace quelto {

/// A part of a movie file, with its first video track. Units: from the start of the movie.
struct TranscodeClip {
    QString path;
    HostDuration start{};
    HostDuration end{};
};

/// Keeps the times of the source's frames. The first frame is the one that is shown when the part begins. A frame that
/// would be visible for less than a millisecond is left out: the limits of a part are often rounded.
struct KeepFrameTimes {
    /// A frame that follows the last one sooner is dropped. Units: seconds. 0 drops none.
    double minGap = 0;
};

/// One frame in each period of the rate, whatever the source has.
struct ConstantFrameRate {
    int framesPerSecond = 30;
};

/// An image that is shown over the video for some time.
struct TimedOverlay {
    /// Premultiplied ARGB.
    QImage image;
    /// Units: pixels of the canvas.
    QPoint position;
    /// From 0 to 1, by the time of the output in seconds.
    std::function<double(double)> opacity;
};

struct TranscodeVideo {
    QSize size;
    /// Where an image of this size, as it is displayed, is drawn. The canvas has the size above.
    std::function<FrameLayout(QSizeF)> layout;
    std::optional<ConstantFrameRate> constantRate;
    KeepFrameTimes keptTimes;
    /// The declared rate, for the encoder.
    int framesPerSecond = 60;
    /// Units: frames.
    int maxKeyFrameInterval = 60;
    /// Units: bits per second. Without it, the quality is constant, so high that no difference is visible.
    std::optional<int> bitsPerSecond;
    /// A factor for the picture from 0 to 1, by the time of the output in seconds. Optional.
    std::function<double(double)> brightness;
    std::optional<TimedOverlay> overlay;
};

/// An audio track of the output: one track of each clip, back to back. Clips without that track are silent.
struct TranscodeAudio {
    /// Counted from 0 in the order of the file.
    int sourceTrack = 0;
    bool isEnabled = true;
    int bitsPerSecond = 192000;
    /// By the position in the output in frames at 48,000 Hz. Optional.
    std::function<double(std::int64_t)> gain;
};

/// The transcoding was asked to stop.
class TranscodeStopped : public std::exception { };

/// A movie to be made from others: the clips back to back, drawn on one canvas.
struct TranscodeJob {
    /// At least one.
    std::vector<TranscodeClip> clips;
    TranscodeVideo video;
    std::vector<TranscodeAudio> audio;
};

/// How long the clips last back to back.
inline HostDuration lengthOf(std::span<const TranscodeClip> clips)
{
    HostDuration length{};
    for (const auto& clip : clips) {
        length += clip.end - clip.start;
    }
    return length;
}

} // namespace quelto
