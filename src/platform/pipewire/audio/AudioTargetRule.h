// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/Graph.h"

namespace quelto::pipewire {

enum class LinkMode {
    /// The link carries audio only while something else keeps the device running, so unused devices can suspend.
    passive,
    /// The link keeps the device running.
    active,
};

/// Decides which streams or devices a source records. The decision depends on the graph alone and is repeated whenever
/// the graph changes.
///
/// A rule returns the links that should lead into the capture node; AudioCapture creates and removes them. The server
/// mixes everything that is linked to one port.
class AudioTargetRule {
public:
    virtual ~AudioTargetRule() = default;

    /// The capture node's name in the graph.
    virtual QString nodeName() const = 0;
    virtual LinkMode linkMode() const = 0;

    /// The number of channels to record, 1 or 2. Nothing if the device is missing.
    virtual std::optional<int> channels(const Graph& graph) const = 0;
    /// The links that should lead into the capture node. Empty until the node has the ports for channels().
    virtual LinkPlan links(const Graph& graph, ObjectId captureNode) const = 0;
    /// The output device that plays the recorded audio, which is heard after that device's latency. Nothing if an input
    /// device is recorded, whose latency lies before the capture.
    virtual std::optional<ObjectId> playbackDevice(const Graph& graph) const = 0;

    /// Whether silence is delivered while the device exists and no stream is linked. An input device always sends
    /// audio.
    virtual bool fillsPauses() const = 0;

    /// Translated sentences for the user.
    virtual QString noServerMessage() const = 0;
    virtual QString noDeviceMessage() const = 0;
};

} // namespace quelto::pipewire
