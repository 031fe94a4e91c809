// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/CaptureRule.h"
#include "platform/pipewire/audio/CaptureStream.h"
#include "platform/pipewire/audio/LinkSet.h"
#include "platform/pipewire/core/PipeWireConnection.h"

namespace quelto::pipewire {

/// One running capture: keeps the stream and its links as the rule says, through changes of the graph and losses of
/// the server.
///
/// Thread: the loop's lock held, for creation and destruction too.
class AudioCapture final : private PipeWireConnection::Listener {
public:
    /// All three outlive the session.
    AudioCapture(PipeWireConnection& connection, const CaptureRule& rule, AudioDeliveryThread& handOver);
    ~AudioCapture() override;

    bool hasDevice() const;

private:
    void onGraphChanged() override;
    void onServerLost() override;

    void keepStream(std::optional<int> channels);
    void keepLinks();
    void keepOutputLatency();
    void handleStreamState();
    void recover();
    void warn(const std::optional<QString>& warning);

    PipeWireConnection& m_connection;
    const CaptureRule& m_rule;
    AudioDeliveryThread& m_handOver;
    std::optional<QString> m_warning;
    OutputLatency m_outputLatency;
    LinkSet m_links;
    std::unique_ptr<CaptureStream> m_stream;
    LoopTimer m_missingDevice;
    LoopTimer m_recovery;
};

} // namespace quelto::pipewire
