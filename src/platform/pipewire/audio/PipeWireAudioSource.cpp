// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/PipeWireAudioSource.h"

#include "platform/PlatformError.h"

namespace quelto::pipewire {

namespace {

constexpr std::chrono::milliseconds ServerTimeout(1000);
/// Right after login, or after a device was plugged in, the session manager may not have chosen a default device yet.
constexpr std::chrono::milliseconds DeviceTimeout(1000);

} // namespace

PipeWireAudioSource::PipeWireAudioSource(std::shared_ptr<PipeWireConnection> connection,
                                         std::unique_ptr<const AudioTargetRule> rule)
    : m_connection(std::move(connection))
    , m_rule(std::move(rule))
{
}

PipeWireAudioSource::~PipeWireAudioSource()
{
    stop();
}

void PipeWireAudioSource::start(AudioSourceEvents events)
{
    stop();
    if (!m_connection->waitUntilReady(ServerTimeout)) {
        throw PlatformError(m_rule->noServerMessage());
    }
    m_delivery = std::make_unique<AudioDeliveryThread>(std::move(events));
    bool hasDevice = false;
    {
        const PipeWireConnection::Lock lock(*m_connection);
        m_capture = std::make_unique<AudioCapture>(*m_connection, *m_rule, *m_delivery);
        const auto deadline = std::chrono::steady_clock::now() + DeviceTimeout;
        while (!(hasDevice = m_capture->hasDevice()) && std::chrono::steady_clock::now() < deadline) {
            m_connection->waitForChange(deadline);
        }
    }
    if (!hasDevice) {
        stop();
        throw PlatformError(m_rule->noDeviceMessage());
    }
}

void PipeWireAudioSource::stop() noexcept
{
    if (m_capture) {
        const PipeWireConnection::Lock lock(*m_connection);
        m_capture.reset();
    }
    m_delivery.reset();
}

} // namespace quelto::pipewire
