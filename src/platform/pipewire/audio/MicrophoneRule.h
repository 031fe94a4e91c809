// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"
#include "platform/pipewire/audio/CaptureRule.h"

namespace quelto::pipewire {

/// One recording device: the chosen one, else the default one while the chosen one is away.
///
/// A device with one channel is recorded in one, any other in two: its front sides where it has them, else its first
/// two channels.
class MicrophoneRule final : public CaptureRule {
public:
    /// The node's name; empty for the default device.
    explicit MicrophoneRule(QString id);

    QString nodeName() const override { return QStringLiteral("quelto-microphone"); }
    LinkWeight linkWeight() const override { return LinkWeight::active; }
    std::optional<int> channels(const Graph& graph) const override;
    LinkPlan links(const Graph& graph, ObjectId captureNode) const override;
    std::optional<ObjectId> heardThrough(const Graph&) const override { return std::nullopt; }
    QString noServer() const override;
    QString noDevice() const override;

    /// The device to record from now.
    std::optional<ObjectId> device(const Graph& graph) const;

private:
    QString m_id;
};

/// All recording devices, without the monitors of outputs and without what this program made itself.
QList<MicrophoneInfo> microphonesIn(const Graph& graph);

} // namespace quelto::pipewire
