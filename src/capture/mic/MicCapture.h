// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

/// Captures the microphone: passes on every buffer, and from time to time the level.
///
/// Thread: start and stop from one thread at a time. Callbacks are set before the first start and run on the device's
/// thread.
class MicCapture {
public:
    using Clock = std::function<HostTime()>;

    explicit MicCapture(AudioServer& server, Clock clock = HostClock::now);
    ~MicCapture();
    MicCapture(const MicCapture&) = delete;
    MicCapture& operator=(const MicCapture&) = delete;

    std::function<void(AudioBufferPtr)> onBuffer;
    /// The peak of one buffer, 0 to 1, at most every 0.08 seconds. Buffers in between are not measured.
    std::function<void(float)> onLevel;
    /// Reports after each start, and whenever it changes, the problem with the device; nothing if it works.
    std::function<void(std::optional<QString>)> onWarning;

    /// Starts the device with that id, or the default device if the id is empty or the device is gone. Stops a previous
    /// device first.
    void start(const QString& deviceID);
    /// No callback runs after this returns.
    void stop() noexcept;

private:
    void deliver(const AudioBufferPtr& sample);

    AudioServer& m_server;
    Clock m_clock;
    HostTime m_lastLevelTime{};
    std::unique_ptr<AudioSource> m_source;
};

} // namespace quelto
