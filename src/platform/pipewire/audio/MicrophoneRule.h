// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"
#include "platform/pipewire/audio/AudioTargetRule.h"

namespace quelto::pipewire {

/// Records one input device: the chosen one, or the default one while the chosen one is missing.
///
/// A device with one channel is recorded in mono, any other in stereo: its front left and right channels if it has
/// them, else its first two channels.
class MicrophoneRule final : public AudioTargetRule {
public:
    /// The id is the node's name; empty for the default device.
    explicit MicrophoneRule(QString id);

    QString nodeName() const override { return QStringLiteral("quelto-microphone"); }
    LinkMode linkMode() const override { return LinkMode::active; }
    TimestampReference timestamps() const override { return TimestampReference::capture; }
    std::optional<int> channels(const Graph& graph) const override;
    LinkPlan links(const Graph& graph, ObjectId captureNode) const override;
    std::optional<ObjectId> playbackDevice(const Graph&) const override { return std::nullopt; }
    bool fillsPauses() const override { return false; }
    QString noServerMessage() const override;
    QString noDeviceMessage() const override;

    /// The device to record from at present.
    std::optional<ObjectId> device(const Graph& graph) const;

private:
    QString m_id;
};

/// All input devices, without monitors of outputs and without this program's own nodes.
QList<MicrophoneInfo> microphonesIn(const Graph& graph);

} // namespace quelto::pipewire
