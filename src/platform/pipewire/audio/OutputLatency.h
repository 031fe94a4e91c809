// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/Graph.h"
#include "platform/pipewire/core/PipeWireHandles.h"

#include <atomic>

namespace quelto::pipewire {

/// The latency of an output device, from the graph to the speaker, as the server reports it for a port.
///
/// Thread: track() and reset() with the loop's lock held. inNanoseconds() on any thread; it never blocks.
class OutputLatency {
public:
    /// Observes the port's latency. Without a port the latency is zero.
    void track(pw_registry* registry, std::optional<ObjectId> port);
    void reset();

    /// Takes the duration of a graph cycle and the graph's sample rate.
    std::int64_t inNanoseconds(std::int64_t cycleNanoseconds, std::uint32_t rate) const noexcept;

private:
    void read(const spa_pod* parameter);

    static const pw_port_events PortEvents;

    std::optional<ObjectId> m_port;
    ProxyPtr m_proxy;
    Hook m_hook;
    // The latency is the sum of these. The server reports each as a range, of which this is the middle.
    std::atomic<float> m_cycles = 0;
    std::atomic<std::int64_t> m_frames = 0;
    std::atomic<std::int64_t> m_nanoseconds = 0;
};

} // namespace quelto::pipewire
