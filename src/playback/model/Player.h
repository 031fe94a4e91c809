// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "playback/rules/FrameTimes.h"

#include <QObject>

#include <optional>

namespace quelto {

/// Plays one file at a time. An interface, so that the rules of ClipPlayerModel can be tested without a decoder.
///
/// Thread: main. Nothing blocks. Units: seconds from the start of the clip. Errors: a file that cannot be played has no
/// duration and shows nothing.
class Player : public QObject {
    Q_OBJECT

public:
    /// Replaces the open file, and shows the first picture of this one until play is called. Until that is there, the
    /// picture of the earlier file stays.
    virtual void open(const QString& path) = 0;
    /// From `open` until the first picture of the file is there, or it turns out that the file cannot be played.
    virtual bool isOpening() const = 0;
    /// Releases the file, and shows nothing until the first picture of the next one is there.
    virtual void close() = 0;

    /// 1 is the speed of the recording.
    virtual void play(double rate) = 0;
    virtual void pause() = 0;
    /// Shows the picture of exactly this time. Of several requests, only the latest one is carried out.
    virtual void seek(double seconds) = 0;
    /// From 0 to 1.
    virtual void setVolume(double volume) = 0;

    /// The time of the latest request until that is shown.
    virtual double position() const = 0;
    /// Nothing until it is known.
    virtual std::optional<double> duration() const = 0;
    /// 0 while nothing plays.
    virtual double rate() const = 0;
    /// Unknown until the file is read.
    virtual const FrameTimes& frames() const = 0;

Q_SIGNALS:
    /// The position, the duration or the rate changed other than by playing on, or the file is open.
    void changed();
    /// Playback reached the end of the file, and stopped there.
    void ended();
};

} // namespace quelto
