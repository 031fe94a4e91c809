// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace quelto {

/// One playback stream: a steady tone, a beep at the flash of each second, or both.
struct SceneVoice {
    /// Sink to play into; empty: the default one.
    std::string sink;
    std::string name;
    /// 0: none.
    double leftTone = 0;
    double rightTone = 0;
    bool hasBeeps = false;

    /// Peaks, full scale being 1.
    static constexpr double ToneLevel = 0.25;
    static constexpr double BeepLevel = 0.5;
    static constexpr double BeepHertz = 1000;
    static constexpr double BeepSeconds = 0.05;
};

/// Plays one voice through PipeWire. The beep is written so that by the graph's own timing, its delay included, it is
/// heard at the whole seconds after `setStart`.
///
/// Thread: one, besides PipeWire's.
/// Errors: none; a sound server that is not there, or goes away, shows in isLost.
class SceneSound {
public:
    explicit SceneSound(SceneVoice voice);
    ~SceneSound();
    SceneSound(const SceneSound&) = delete;
    SceneSound& operator=(const SceneSound&) = delete;

    /// Nanoseconds of CLOCK_MONOTONIC at which the first flash is; before that there are no beeps.
    void setStart(std::int64_t start) noexcept;
    /// True once the first frames were asked for.
    bool isPlaying() const noexcept;
    /// The connection failed or broke: make a new one.
    bool isLost() const noexcept;

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
};

} // namespace quelto
