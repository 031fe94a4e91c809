// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "playback/model/Player.h"

namespace quelto {

/// Plays nothing. Stands in where the real player cannot start, so that the rest of a screen works.
class NoPlayer final : public Player {
public:
    void open(const QString& /*path*/) override { }
    bool isOpening() const override { return false; }
    void close() override { }
    void play(double /*rate*/) override { }
    void pause() override { }
    void seek(double /*seconds*/) override { }
    void setVolume(double /*volume*/) override { }
    double position() const override { return 0; }
    std::optional<double> duration() const override { return std::nullopt; }
    double rate() const override { return 0; }
    const FrameTimes& frames() const override { return m_frames; }

private:
    FrameTimes m_frames;
};

} // namespace quelto
