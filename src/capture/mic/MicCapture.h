// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

/// The microphone: hands on every sample, and now and then how loud it is.
///
/// Thread: start and stop from one thread at a time; the callbacks come on the device's own thread and are set before
/// the first start.
class MicCapture {
public:
    using Clock = std::function<HostTime()>;

    explicit MicCapture(AudioServer& server, Clock clock = HostClock::now);
    ~MicCapture();
    MicCapture(const MicCapture&) = delete;
    MicCapture& operator=(const MicCapture&) = delete;

    std::function<void(AudioBufferPtr)> onSample;
    /// A peak from 0 to 1, at most once in 0.08 seconds. The samples between are not measured.
    std::function<void(float)> onLevel;
    /// What is wrong with the running device, or nothing once it is back.
    std::function<void(std::optional<QString>)> onWarning;

    /// The device of that id; the default one if the id is empty or the device is gone. An earlier one is stopped
    /// first. Errors: PlatformError.
    void start(const QString& deviceID);
    /// No callback comes after it returns.
    void stop() noexcept;

private:
    void deliver(const AudioBufferPtr& sample);

    AudioServer& m_server;
    Clock m_clock;
    HostTime m_lastLevelTime{};
    std::unique_ptr<AudioSource> m_source;
};

} // namespace quelto
