// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/PipeWireSource.h"

#include "platform/PlatformError.h"

namespace quelto::pipewire {

namespace {

constexpr std::chrono::milliseconds ServerPatience(1000);
/// Right after log-in, or after a device was plugged in, the session may still be choosing.
constexpr std::chrono::milliseconds DevicePatience(1000);

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

void PipeWireSource::start(SoundEvents events)
{
    stop();
    if (!m_connection->waitUntilReady(ServerPatience)) {
        throw PlatformError(m_rule->noServer());
    }
    m_handOver = std::make_unique<SampleHandOver>(std::move(events));
    bool hasDevice = false;
    {
        const PipeWireConnection::Lock lock(*m_connection);
        m_session = std::make_unique<CaptureSession>(*m_connection, *m_rule, *m_handOver);
        const auto deadline = std::chrono::steady_clock::now() + DevicePatience;
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
