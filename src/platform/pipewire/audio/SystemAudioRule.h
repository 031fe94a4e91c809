// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/CaptureRule.h"

namespace quelto::pipewire {

/// What is heard from the default output, without this program's own sounds.
///
/// The links into the default output are mirrored into the capture node. So each program is recorded once, in front
/// of whatever effects follow the output, and on the side on which it is heard; the mix of the output itself could not
/// be had without ourselves.
class SystemAudioRule final : public CaptureRule {
public:
    QString nodeName() const override { return QStringLiteral("quelto-system-sound"); }
    LinkWeight linkWeight() const override { return LinkWeight::passive; }
    std::optional<int> channels(const Graph& graph) const override;
    LinkPlan links(const Graph& graph, ObjectId captureNode) const override;
    std::optional<ObjectId> heardThrough(const Graph& graph) const override;
    QString noServer() const override;
    QString noDevice() const override;
};

} // namespace quelto::pipewire
