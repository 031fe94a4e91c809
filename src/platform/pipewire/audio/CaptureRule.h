// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/Graph.h"

namespace quelto::pipewire {

enum class LinkWeight {
    /// Sound is fetched only while something else keeps it going, so that unused devices may sleep.
    passive,
    /// The link itself keeps the device awake.
    active,
};

/// Which sound a source captures, decided from the graph alone and decided anew whenever the graph changes.
///
/// A rule names the links that should exist into the capture node; whoever applies it makes and removes them. The
/// server adds up all that is linked to one port.
class CaptureRule {
public:
    virtual ~CaptureRule() = default;

    /// The capture node's name in the graph.
    virtual QString nodeName() const = 0;
    virtual LinkWeight linkWeight() const = 0;

    /// With how many channels, 1 or 2, there is something to capture; nothing where the device is missing.
    virtual std::optional<int> channels(const Graph& graph) const = 0;
    /// The links that should end in the capture node, whose ports are those of a capture with that many channels.
    virtual LinkPlan links(const Graph& graph, ObjectId captureNode) const = 0;
    /// The device that plays what is captured. Its delay passes between the capture and the ear; where there is none,
    /// the delay of the device that is recorded from has passed already.
    virtual std::optional<ObjectId> heardThrough(const Graph& graph) const = 0;

    /// Sentences for the user.
    virtual QString noServer() const = 0;
    virtual QString noDevice() const = 0;
};

} // namespace quelto::pipewire
