// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Sound.h"
#include "platform/pipewire/audio/CaptureSession.h"

namespace quelto::pipewire {

/// A sound source that captures what a rule says.
class PipeWireSource final : public SoundSource {
public:
    PipeWireSource(std::shared_ptr<PipeWireConnection> connection, std::unique_ptr<const CaptureRule> rule);
    ~PipeWireSource() override;

    void start(SoundEvents events) override;
    void stop() noexcept override;

private:
    std::shared_ptr<PipeWireConnection> m_connection;
    std::unique_ptr<const CaptureRule> m_rule;
    std::unique_ptr<SampleHandOver> m_handOver;
    std::unique_ptr<CaptureSession> m_session;
};

} // namespace quelto::pipewire
