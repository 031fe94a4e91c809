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

/// The decoder configuration of a video track. Shared by all frames of one encoder.
struct VideoFormat {
    VideoCodec codec = VideoCodec::h264;
    QSize size;
    /// The encoder's parameter sets (SPS, PPS, for HEVC also VPS), in Annex B format.
    std::vector<std::byte> parameterSets;
};

/// One encoded video frame. Immutable after construction; shared by the replay buffer and its snapshots.
struct EncodedFrame {
    HostTime presentationTime;
    /// Whether decoding cannot start at this frame. Set if the encoder reports it; most encoders do so for every frame.
    std::optional<bool> isNotSync;
    /// The access unit in Annex B format.
    std::vector<std::byte> data;
    std::shared_ptr<const VideoFormat> format;

    /// A frame without sync information counts as a key frame.
    bool isKeyframe() const noexcept { return !isNotSync.value_or(false); }
    std::size_t totalSize() const noexcept { return data.size(); }
};

using EncodedFramePtr = std::shared_ptr<const EncodedFrame>;
using EncodedFrames = QList<EncodedFramePtr>;

} // namespace quelto
