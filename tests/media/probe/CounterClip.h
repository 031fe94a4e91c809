// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/media/reader/GeneratedClips.h"

#include <QImage>
#include <QRect>
#include <QSize>

#include <vector>

namespace quelto::test {

/// An audio track of short beeps, at 0.25 s, 0.75 s, 1.25 s and so on of its own time.
struct BeepTrack {
    /// Units: Hz.
    double pitch = 1000;
    int sampleRate = 48000;
    /// FFmpeg's name of the channel layout. All channels have the same sound.
    QString channels = QStringLiteral("stereo");
    /// Where the track starts in the movie. Units: seconds.
    double start = 0;
    /// 0 for the length of the video.
    double seconds = 0;
};

/// A clip whose frames are numbered by 16 upright bars of equal width: a white one, the 14 bits of the number with the
/// lowest bit first, and a black one. See readCounter and beepTimes for the readers.
struct CounterClip {
    static constexpr int bars = 16;

    QSize size{320, 180};
    /// Frames per second, as FFmpeg reads it.
    QString rate = QStringLiteral("60");
    /// Instead of the rate: the time of each frame, at most a few dozen. Units: seconds.
    std::vector<double> times;
    double seconds = 2;
    int firstNumber = 0;
    /// Where the video starts in the movie. Units: seconds.
    double videoStart = 0;
    /// FFmpeg filters that change the picture.
    QString filter;
    /// Arguments of ffmpeg without spaces in them.
    QString encoding = QStringLiteral("-c:v libx264 -preset ultrafast -qp 18");
    std::vector<BeepTrack> audio{BeepTrack{}};
    QString audioEncoding = QStringLiteral("-c:a aac -b:a 128k");
    QString muxing;
};

/// Makes the clip with the ffmpeg command line. Returns its path. Errors: std::runtime_error with ffmpeg's text.
QString makeClip(const GeneratedClips& clips, const QString& name, const CounterClip& clip = {});

/// A decoded frame of a counter clip.
struct CountedFrame {
    /// -1 if it cannot be read, as in black.
    int number = -1;
    double time = 0;
    /// The luma of the bars that are always white and always black. Units: full range, 0 to 255.
    double white = 0;
    double black = 0;
};

/// Reads the number and time of each frame as a player shows it. The bars fill the rectangle, by default the whole
/// picture. Errors: std::runtime_error with ffmpeg's text.
std::vector<CountedFrame> readCounter(const QString& path, const QRect& rect = {});

/// The number in a picture of a counter clip; -1 if there is none. The bars fill the rectangle, by default the whole
/// picture.
int numberOf(const QImage& picture, const QRect& rect = {});

/// The numbers only.
std::vector<int> numbersOf(const std::vector<CountedFrame>& frames);
/// The times only.
std::vector<double> timesOf(const std::vector<CountedFrame>& frames);

/// When the beeps of a pitch begin in an audio track of a movie. Units: seconds. Errors: std::runtime_error with
/// ffmpeg's text.
std::vector<double> beepTimes(const QString& path, int audioTrack, double pitch = BeepTrack().pitch);

} // namespace quelto::test
