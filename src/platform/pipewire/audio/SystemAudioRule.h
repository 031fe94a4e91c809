// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/AudioTargetRule.h"

namespace quelto::pipewire {

/// Records what the default output plays, without this program's own audio.
///
/// Every link into the default output gets a copy into the capture node. So each program is recorded once, on the side
/// on which it is heard, and before any effects behind the output. The monitor of the output cannot be used because it
/// contains this program's own audio.
class SystemAudioRule final : public AudioTargetRule {
public:
    QString nodeName() const override { return QStringLiteral("quelto-system-sound"); }
    LinkMode linkMode() const override { return LinkMode::passive; }
    TimestampReference timestamps() const override { return TimestampReference::playback; }
    std::optional<int> channels(const Graph& graph) const override;
    LinkPlan links(const Graph& graph, ObjectId captureNode) const override;
    std::optional<ObjectId> playbackDevice(const Graph& graph) const override;
    bool fillsPauses() const override { return true; }
    QString noServerMessage() const override;
    QString noDeviceMessage() const override;
};

} // namespace quelto::pipewire
