// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/EncoderCandidates.h"
#include "media/ffmpeg/Handles.h"

#include <QSize>

#include <vector>

namespace quelto {

class VaapiUpload;

/// A libavcodec encoder for pictures of BT.709 colours and limited range, not open yet. With an upload it takes frames
/// in GPU memory. Errors: ffmpeg::FfmpegError if the encoder is missing.
ffmpeg::CodecContext makeEncoderContext(const EncoderCandidate& candidate, QSize size, AVPixelFormat format,
                                        const VaapiUpload* upload);

/// Opens the encoder and returns its parameter sets, in Annex B format. Options that this version of FFmpeg does not
/// know are ignored. Errors: ffmpeg::FfmpegError, also for an encoder that returns no parameter sets.
std::vector<std::byte> openEncoder(AVCodecContext& context, std::span<const EncoderOption> options);

} // namespace quelto
