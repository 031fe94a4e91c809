// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/Graph.h"
#include "platform/pipewire/core/PipeWireHandles.h"

#include <atomic>

namespace quelto::pipewire {

/// How long an output takes from the graph to the ear, as the server reports it for a port.
///
/// Thread: follow and forget with the loop's lock held; inNanoseconds from any thread, it never waits.
class OutputLatency {
public:
    /// Nothing: no delay.
    void follow(pw_registry* registry, std::optional<ObjectId> port);
    void forget();

    /// Units: the length of the graph's cycle in nanoseconds, and its rate.
    std::int64_t inNanoseconds(std::int64_t cycleNanoseconds, std::uint32_t rate) const noexcept;

private:
    void read(const spa_pod* parameter);

    static const pw_port_events PortEvents;

    std::optional<ObjectId> m_port;
    ProxyPtr m_proxy;
    Hook m_hook;
    // Servers report a sum of three, each as a range.
    std::atomic<float> m_cycles = 0;
    std::atomic<std::int64_t> m_frames = 0;
    std::atomic<std::int64_t> m_nanoseconds = 0;
};

} // namespace quelto::pipewire
