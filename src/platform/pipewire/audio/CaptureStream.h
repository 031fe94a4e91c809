// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/AudioDeliveryThread.h"
#include "platform/pipewire/audio/AudioTargetRule.h"
#include "platform/pipewire/audio/OutputLatency.h"
#include "platform/pipewire/core/PipeWireHandles.h"

namespace quelto::pipewire {

/// A capture node in the server's graph. It does not link its ports itself; see LinkSet.
///
/// Thread: the loop's lock held, for creation and destruction too; events come on the loop's thread.
class CaptureStream {
public:
    struct Settings {
        QString nodeName;
        int channels = 2;
        TimestampReference timestamps = TimestampReference::capture;
    };

    enum class State { connecting, ready, broken };

    /// The delivery and the latency must outlive the stream. onStateChanged must not destroy the stream.
    CaptureStream(pw_core* core, const Settings& settings, AudioDeliveryThread& delivery,
                  const OutputLatency& outputLatency, std::function<void()> onStateChanged);

    State state() const noexcept { return m_state; }
    int channels() const noexcept { return m_settings.channels; }
    /// The node's id in the graph. Valid in the state ready.
    ObjectId node() const;

private:
    void handleState(pw_stream_state state);
    void process() noexcept;
    HostTime cycleTimestamp() const noexcept;

    static const pw_stream_events StreamEvents;

    Settings m_settings;
    AudioDeliveryThread& m_delivery;
    const OutputLatency& m_outputLatency;
    std::function<void()> m_onStateChanged;
    State m_state = State::connecting;
    std::atomic<const spa_io_position*> m_position = nullptr;
    StreamPtr m_stream;
    Hook m_hook;
};

} // namespace quelto::pipewire
