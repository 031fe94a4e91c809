// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/ExportEncoder.h"
#include "media/transcode/TranscodeJob.h"

#include <functional>
#include <stop_token>

namespace quelto {

class AtomicFile;

struct TranscodeOptions {
    std::stop_token stop;
    /// Takes the part of the work that is done, which increases, below 1. Optional.
    std::function<void(double)> progress;
    EncoderChoice encoder = EncoderChoice::any;
    OpenExportEncoder openEncoder = openExportEncoder;
};

/// A hardware encoder failed; one in software may do.
class HardwareEncoderError : public EncoderError {
public:
    using EncoderError::EncoderError;
};

/// Makes an MP4 file of H.264 and AAC from a job: decodes, draws, encodes and writes it. The file is not flushed.
///
/// Thread: any; blocks for the whole time. Errors: std::system_error from the disk, TranscodeStopped, EncoderError,
/// MuxError, std::runtime_error with FFmpeg's text for a source that cannot be read, std::bad_alloc.
void transcode(const TranscodeJob& job, AtomicFile& file, const TranscodeOptions& options);

} // namespace quelto
