// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/Graph.h"

#include <QSet>

namespace quelto::pipewire {

enum class LinkMode {
    /// The link carries audio only while something else keeps the device running, so unused devices can suspend.
    passive,
    /// The link keeps the device running.
    active,
};

/// Which time the timestamps of a stream denote.
enum class TimestampReference {
    /// When an input device recorded the audio, which is before the graph cycle that delivers it.
    capture,
    /// When an output device plays the audio, which is after the graph cycle that delivers it.
    playback,
};

/// What a missing target means.
enum class MissingTarget {
    /// The capture node stays, without links, and the user is warned.
    problem,
    /// There is nothing to record and no capture node.
    normal,
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
    virtual TimestampReference timestamps() const = 0;
    virtual MissingTarget missingTarget() const { return MissingTarget::problem; }

    /// The number of channels to record, 1 or 2. Nothing if the target, a device or application, is missing.
    virtual std::optional<int> channels(const Graph& graph) const = 0;
    /// The links that should lead into the capture node. Empty until the node has the ports for channels().
    virtual LinkPlan links(const Graph& graph, ObjectId captureNode) const = 0;
    /// The output device that plays the recorded audio, which is heard after that device's latency. Nothing if an input
    /// device is recorded, whose latency lies before the capture, or no output exists.
    virtual std::optional<ObjectId> playbackDevice(const Graph& graph) const = 0;
    /// The ids of the recorded applications. Empty for a rule that records devices.
    virtual QSet<QString> applications(const Graph&) const { return {}; }

    /// Whether silence is delivered while the device exists and no stream is linked. An input device always sends
    /// audio.
    virtual bool fillsPauses() const = 0;

    /// Translated sentences for the user. The second one is for rules whose missing target is a problem.
    virtual QString noServerMessage() const = 0;
    virtual QString noDeviceMessage() const { return {}; }
};

} // namespace quelto::pipewire
