// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/VideoEncoder.h"
#include "media/ffmpeg/Handles.h"

#include <span>
#include <utility>

namespace quelto {

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

/// An encoder that may be available, and its private options.
struct EncoderCandidate {
    VideoCodec codec = VideoCodec::h264;
    const char* name = nullptr;
    FrameInput input = FrameInput::nv12;
    EncoderKind kind = EncoderKind::software;
    std::span<const std::pair<const char*, const char*>> options;
};

/// In order of preference.
std::span<const EncoderCandidate> encoderCandidates() noexcept;

} // namespace quelto
