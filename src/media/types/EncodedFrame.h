// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/VideoCodec.h"
#include "base/time/HostClock.h"

#include <QList>
#include <QSize>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace quelto {

/// What a player must know before it can decode a track. Shared by all samples of one encoder.
struct VideoFormat {
    VideoCodec codec = VideoCodec::h264;
    QSize size;
    /// The encoder's parameter sets (SPS, PPS, for HEVC also VPS), in Annex B form.
    std::vector<std::byte> parameterSets;
};

/// One encoded picture. Immutable once made; the replay buffer and its snapshots share it.
struct EncodedFrame {
    HostTime presentationTime;
    /// Set where the encoder says whether a decoder can start here; most formats say it for every picture.
    std::optional<bool> isNotSync;
    /// The access unit in Annex B form.
    std::vector<std::byte> data;
    std::shared_ptr<const VideoFormat> format;

    /// A sample that says nothing about itself is one that a clip may start with.
    bool isKeyframe() const noexcept { return !isNotSync.value_or(false); }
    std::size_t totalSize() const noexcept { return data.size(); }
};

using EncodedFramePtr = std::shared_ptr<const EncodedFrame>;
using EncodedFrames = QList<EncodedFramePtr>;

} // namespace quelto
