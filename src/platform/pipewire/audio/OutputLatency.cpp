// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/OutputLatency.h"

#include <spa/param/latency-utils.h>

namespace quelto::pipewire {

const pw_port_events OutputLatency::PortEvents = {
    .version = PW_VERSION_PORT_EVENTS,
    .info = nullptr,
    .param = [](void* data, int, std::uint32_t, std::uint32_t, std::uint32_t,
                const spa_pod* parameter) { static_cast<OutputLatency*>(data)->read(parameter); },
};

void OutputLatency::track(pw_registry* registry, std::optional<ObjectId> port)
{
    if (port == m_port) {
        return;
    }
    reset();
    if (!port) {
        return;
    }
    m_proxy = bind(registry, *port, PW_TYPE_INTERFACE_Port, PW_VERSION_PORT);
    if (!m_proxy) {
        return;
    }
    m_port = port;
    listen(objectOf<pw_port>(m_proxy), m_hook, PortEvents, this);
    subscribe(objectOf<pw_port>(m_proxy), SPA_PARAM_Latency);
}

void OutputLatency::reset()
{
    m_hook.remove();
    m_proxy.reset();
    m_port.reset();
    m_cycles = 0;
    m_frames = 0;
    m_nanoseconds = 0;
}

std::int64_t OutputLatency::inNanoseconds(std::int64_t cycleNanoseconds, std::uint32_t rate) const noexcept
{
    const auto cycles = static_cast<double>(m_cycles.load(std::memory_order_relaxed));
    const std::int64_t frames = m_frames.load(std::memory_order_relaxed);
    return std::llround(cycles * static_cast<double>(cycleNanoseconds)) +
        (rate > 0 ? frames * std::int64_t(1'000'000'000) / rate : 0) + m_nanoseconds.load(std::memory_order_relaxed);
}

void OutputLatency::read(const spa_pod* parameter)
{
    spa_latency_info info = {};
    // The other direction describes the latency of input.
    if (!parameter || spa_latency_parse(parameter, &info) < 0 || info.direction != SPA_DIRECTION_INPUT) {
        return;
    }
    m_cycles = (info.min_quantum + info.max_quantum) / 2;
    m_frames = (std::int64_t(info.min_rate) + std::int64_t(info.max_rate)) / 2;
    m_nanoseconds = static_cast<std::int64_t>(info.min_ns / 2 + info.max_ns / 2);
}

} // namespace quelto::pipewire
