// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/AudioTargetRule.h"
#include "platform/pipewire/audio/CaptureStream.h"
#include "platform/pipewire/audio/LinkSet.h"
#include "platform/pipewire/core/PipeWireConnection.h"

namespace quelto::pipewire {

/// A running capture: keeps the stream and its links as the rule requires while the graph changes and the server
/// restarts.
///
/// Thread: the loop's lock held, for creation and destruction too.
class AudioCapture final : private PipeWireConnection::Listener {
public:
    /// All three must outlive the capture.
    AudioCapture(PipeWireConnection& connection, const AudioTargetRule& rule, AudioDeliveryThread& delivery);
    ~AudioCapture() override;

private:
    void onGraphChanged() override;
    void onServerLost() override;

    /// Removes the capture node from the graph.
    void endStream();
    void updateStream(std::optional<int> channels);
    void updateLinks();
    void updateOutputLatency();
    void handleStreamState();
    void recover();
    /// Why nothing is recorded, as a translated sentence.
    QString problem() const;
    void reportApplications();
    void warn(const std::optional<QString>& warning);

    PipeWireConnection& m_connection;
    const AudioTargetRule& m_rule;
    AudioDeliveryThread& m_delivery;
    std::optional<QString> m_warning;
    bool m_hasReported = false;
    QSet<QString> m_applications;
    OutputLatency m_outputLatency;
    LinkSet m_links;
    std::unique_ptr<CaptureStream> m_stream;
    /// Runs while the device, or a stream to it, is missing.
    LoopTimer m_missing;
    LoopTimer m_recovery;
};

} // namespace quelto::pipewire
