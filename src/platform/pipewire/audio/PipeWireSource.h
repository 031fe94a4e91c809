// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"
#include "platform/pipewire/audio/AudioCapture.h"

namespace quelto::pipewire {

/// A sound source that captures what a rule says.
class PipeWireSource final : public AudioSource {
public:
    PipeWireSource(std::shared_ptr<PipeWireConnection> connection, std::unique_ptr<const CaptureRule> rule);
    ~PipeWireSource() override;

    void start(AudioSourceEvents events) override;
    void stop() noexcept override;

private:
    std::shared_ptr<PipeWireConnection> m_connection;
    std::unique_ptr<const CaptureRule> m_rule;
    std::unique_ptr<AudioDeliveryThread> m_handOver;
    std::unique_ptr<AudioCapture> m_session;
};

} // namespace quelto::pipewire
