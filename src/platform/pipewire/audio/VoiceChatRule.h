// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/AudioTargetRule.h"

namespace quelto::pipewire {

/// Records what the voice chat applications play.
///
/// The output streams themselves are linked, not the inputs of an output device: so a stream is recorded whichever
/// output it plays to, and before any effects behind it. The capture node exists while at least one application is
/// connected to the server, even if it is silent, so that the start of a call is not lost.
class VoiceChatRule final : public AudioTargetRule {
public:
    QString nodeName() const override { return QStringLiteral("quelto-voice-chat"); }
    LinkMode linkMode() const override { return LinkMode::passive; }
    TimestampReference timestamps() const override { return TimestampReference::playback; }
    MissingTarget missingTarget() const override { return MissingTarget::normal; }
    std::optional<int> channels(const Graph& graph) const override;
    LinkPlan links(const Graph& graph, ObjectId captureNode) const override;
    std::optional<ObjectId> playbackDevice(const Graph& graph) const override;
    QSet<QString> applications(const Graph& graph) const override;
    bool fillsPauses() const override { return false; }
    QString noServerMessage() const override;
};

} // namespace quelto::pipewire
