// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/VideoEncoder.h"
#include "media/ffmpeg/Handles.h"

#include <span>
#include <utility>

namespace quelto {

/// How pictures get into an encoder.
enum class FrameInput {
    /// As they are.
    nv12,
    /// With the chroma planes apart.
    yuv420p,
    /// Copied into the graphics card's memory first.
    vaapi,
};

/// Opening alone proves nothing where a driver stands behind an encoder.
enum class EncoderProof { opens, givesPictures };

/// One encoder that may be there, and the settings that only it knows.
struct EncoderCandidate {
    VideoCodec codec = VideoCodec::h264;
    const char* name = nullptr;
    FrameInput input = FrameInput::nv12;
    EncoderProof proof = EncoderProof::opens;
    std::span<const std::pair<const char*, const char*>> options;
};

/// Best first.
std::span<const EncoderCandidate> encoderCandidates() noexcept;

} // namespace quelto
