// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"
#include "platform/pipewire/audio/AudioCapture.h"

namespace quelto::pipewire {

/// Records the streams or the device that a rule selects.
class PipeWireAudioSource final : public AudioSource {
public:
    PipeWireAudioSource(std::shared_ptr<PipeWireConnection> connection, std::unique_ptr<const AudioTargetRule> rule);
    ~PipeWireAudioSource() override;

    void start(AudioSourceEvents events) override;
    void stop() noexcept override;

private:
    std::shared_ptr<PipeWireConnection> m_connection;
    std::unique_ptr<const AudioTargetRule> m_rule;
    std::unique_ptr<AudioDeliveryThread> m_delivery;
    std::unique_ptr<AudioCapture> m_capture;
};

} // namespace quelto::pipewire
