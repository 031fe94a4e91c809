// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/AudioDeliveryThread.h"
#include "platform/pipewire/audio/CaptureRule.h"
#include "platform/pipewire/audio/OutputLatency.h"
#include "platform/pipewire/core/PipeWireHandles.h"

namespace quelto::pipewire {

enum class StampMeaning {
    /// The sound came in from a device: it is older than the cycle that brings it.
    spoken,
    /// The sound goes to a device as well: it will be heard after the cycle that plays it.
    heard,
};

/// A capture node in the server's graph that stays unlinked until somebody links its ports.
///
/// Thread: the loop's lock held, for creation and destruction too; events come on the loop's thread.
class CaptureStream {
public:
    struct Settings {
        QString nodeName;
        int channels = 2;
        StampMeaning stamps = StampMeaning::spoken;
    };

    enum class State { connecting, ready, broken };

    /// Both outlive the stream. onStateChanged must not destroy the stream.
    CaptureStream(pw_core* core, const Settings& settings, AudioDeliveryThread& handOver,
                  const OutputLatency& outputLatency, std::function<void()> onStateChanged);

    State state() const noexcept { return m_state; }
    int channels() const noexcept { return m_settings.channels; }
    /// The node in the graph, once ready.
    ObjectId node() const;

private:
    void handleState(pw_stream_state state);
    void process() noexcept;
    HostTime stampOfThisCycle() const noexcept;

    static const pw_stream_events StreamEvents;

    Settings m_settings;
    AudioDeliveryThread& m_handOver;
    const OutputLatency& m_outputLatency;
    std::function<void()> m_onStateChanged;
    State m_state = State::connecting;
    std::atomic<const spa_io_position*> m_position = nullptr;
    StreamPtr m_stream;
    Hook m_hook;
};

} // namespace quelto::pipewire
