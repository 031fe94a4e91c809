// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace quelto {

/// One playback stream: a steady tone, a beep at the flash of each second, or both.
struct SceneVoice {
    /// The sink to play to. Empty: the default sink.
    std::string sink;
    std::string name;
    /// Hertz; 0 for no tone.
    double leftTone = 0;
    double rightTone = 0;
    bool hasBeeps = false;

    /// Peak levels; full scale is 1.
    static constexpr double ToneLevel = 0.25;
    static constexpr double BeepLevel = 0.5;
    static constexpr double BeepHertz = 1000;
    static constexpr double BeepSeconds = 0.05;
};

/// Plays one voice through PipeWire. The beep is audible at whole seconds after `setStart`, according to the graph's
/// timing including its delay.
///
/// Thread: any one; PipeWire has its own.
/// Errors: none. isLost reports a sound server that is missing or has ended.
class SceneSound {
public:
    explicit SceneSound(SceneVoice voice);
    ~SceneSound();
    SceneSound(const SceneSound&) = delete;
    SceneSound& operator=(const SceneSound&) = delete;

    /// The time of the first flash and beep, in nanoseconds of CLOCK_MONOTONIC.
    void setStart(std::int64_t start) noexcept;
    /// True after the first request for frames.
    bool isPlaying() const noexcept;
    /// True after the connection has failed or broken. The stream cannot be used again.
    bool isLost() const noexcept;

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
};

} // namespace quelto
