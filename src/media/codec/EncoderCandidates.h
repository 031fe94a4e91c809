// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/VideoCodec.h"

#include <span>
#include <utility>

namespace quelto {

/// What an encoder is used for.
enum class EncoderProfile {
    /// A recording: few CPU cycles, low delay, no B-frames.
    replay,
    /// An export at constant quality, of any size. Fast, because its bits are not limited.
    constantQuality,
    /// An export at an average bit rate: as good as possible for its size.
    averageRate,
};

/// The input format of an encoder.
enum class FrameInput {
    /// Unchanged.
    nv12,
    /// With separate chroma planes.
    yuv420p,
    /// Uploaded to GPU memory.
    vaapi,
};

/// A hardware encoder may open and still fail, so it must encode a frame before it is used.
enum class EncoderKind { hardware, software };

/// A private option of an encoder, with its value.
using EncoderOption = std::pair<const char*, const char*>;

/// An encoder that may be available, and its private options for each profile.
struct EncoderCandidate {
    VideoCodec codec = VideoCodec::h264;
    const char* name = nullptr;
    FrameInput input = FrameInput::nv12;
    EncoderKind kind = EncoderKind::software;
    std::span<const EncoderOption> replay;
    std::span<const EncoderOption> constantQuality;
    std::span<const EncoderOption> averageRate;

    std::span<const EncoderOption> optionsFor(EncoderProfile profile) const noexcept;
};

/// In order of preference.
std::span<const EncoderCandidate> encoderCandidates() noexcept;

} // namespace quelto
