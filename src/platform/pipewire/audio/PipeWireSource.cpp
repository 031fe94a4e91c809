// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/PipeWireSource.h"

#include "platform/PlatformError.h"

namespace quelto::pipewire {

namespace {

constexpr std::chrono::milliseconds ServerTimeout(1000);
/// Right after log-in, or after a device was plugged in, the session may still be choosing.
constexpr std::chrono::milliseconds DeviceTimeout(1000);

} // namespace

PipeWireSource::PipeWireSource(std::shared_ptr<PipeWireConnection> connection, std::unique_ptr<const CaptureRule> rule)
    : m_connection(std::move(connection))
    , m_rule(std::move(rule))
{
}

PipeWireSource::~PipeWireSource()
{
    stop();
}

void PipeWireSource::start(AudioSourceEvents events)
{
    stop();
    if (!m_connection->waitUntilReady(ServerTimeout)) {
        throw PlatformError(m_rule->noServer());
    }
    m_handOver = std::make_unique<AudioDeliveryThread>(std::move(events));
    bool hasDevice = false;
    {
        const PipeWireConnection::Lock lock(*m_connection);
        m_session = std::make_unique<AudioCapture>(*m_connection, *m_rule, *m_handOver);
        const auto deadline = std::chrono::steady_clock::now() + DeviceTimeout;
        while (!(hasDevice = m_session->hasDevice()) && std::chrono::steady_clock::now() < deadline) {
            m_connection->waitForChange(deadline);
        }
    }
    if (!hasDevice) {
        stop();
        throw PlatformError(m_rule->noDevice());
    }
}

void PipeWireSource::stop() noexcept
{
    if (m_session) {
        const PipeWireConnection::Lock lock(*m_connection);
        m_session.reset();
    }
    m_handOver.reset();
}

} // namespace quelto::pipewire
