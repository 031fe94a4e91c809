// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/PipeWireAudioSource.h"

#include <QDebug>

namespace quelto::pipewire {

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
    try {
        m_delivery = std::make_unique<AudioDeliveryThread>(events, m_rule->fillsPauses());
        if (m_connection->start()) {
            const PipeWireConnection::Lock lock(*m_connection);
            m_capture = std::make_unique<AudioCapture>(*m_connection, *m_rule, *m_delivery);
            return;
        }
    } catch (const std::exception& error) {
        // The system has no threads or file descriptors left.
        qWarning("audio: %s", error.what());
    }
    stop();
    if (events.onWarning) {
        events.onWarning(m_rule->noServerMessage());
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
