// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/EncoderCandidates.h"
#include "media/codec/VideoEncoder.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

// Users of this header need not know FFmpeg.
struct AVFrame;
struct AVPacket;

namespace quelto {

/// How an encoder at an average rate learns how to spend its bits. Hardware encoders look ahead instead, and any pass
/// is their only one.
enum class EncoderPass {
    /// From the frames that it has seen so far.
    single,
    /// Writes the statistics file; the packets are of no use.
    first,
    /// Reads the statistics file of the first pass over the same frames.
    second,
};

struct ExportEncoderRequest {
    QSize size;
    int framesPerSecond = 60;
    /// The largest distance of two key frames. Units: frames.
    int maxKeyFrameInterval = 60;
    /// The average rate. Without it, the quality is constant, so high that no difference is visible.
    std::optional<int> bitsPerSecond;
    EncoderChoice choice = EncoderChoice::any;
    EncoderPass pass = EncoderPass::single;
    /// For the first and the second pass.
    QString statisticsFile;
};

/// Encodes the frames of an export to H.264, with B-frames. Its frames are yuv420p, BT.709, limited range.
///
/// Thread: one at a time. Errors: EncoderError; nothing can be encoded afterwards.
class ExportEncoder {
public:
    /// The rate of the frames' and packets' time stamps.
    static constexpr int ticksPerSecond = 90000;
    /// Packets arrive in decoding order.
    using OnPacket = std::function<void(const AVPacket&)>;

    virtual ~ExportEncoder() = default;

    /// The time stamp is in AVFrame::pts and must increase.
    virtual void encode(const AVFrame& frame) = 0;
    /// Outputs the remaining packets. Nothing can be encoded afterwards.
    virtual void finish() = 0;
    /// In Annex B format.
    virtual const std::vector<std::byte>& parameterSets() const noexcept = 0;
    virtual EncoderKind kind() const noexcept = 0;
};

/// Opens an encoder. Errors: EncoderError.
using OpenExportEncoder = std::function<std::unique_ptr<ExportEncoder>(const ExportEncoderRequest& request,
                                                                       ExportEncoder::OnPacket onPacket)>;

/// Opens the first working encoder that the request allows, in the order of those of a recording. Errors: EncoderError.
std::unique_ptr<ExportEncoder> openExportEncoder(const ExportEncoderRequest& request, ExportEncoder::OnPacket onPacket);

} // namespace quelto
