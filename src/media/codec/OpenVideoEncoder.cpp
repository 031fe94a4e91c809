// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/LibavVideoEncoder.h"
#include "media/codec/VideoEncoder.h"
#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

/// Whether an encoder that opens also works: encodes one test frame.
bool encodesFrame(const EncoderCandidate& candidate, const EncoderRequest& request)
{
    int encoded = 0;
    LibavVideoEncoder trial(candidate, request, [&encoded](const EncodedFramePtr&) { ++encoded; });
    FramePool pool(request.size, 1);
    const auto frame = pool.tryAcquire();
    const auto bytes = static_cast<std::size_t>(frame->stride) * static_cast<std::size_t>(request.size.height());
    std::fill_n(frame->luma, bytes, std::uint8_t{16});
    std::fill_n(frame->chroma, bytes / 2, std::uint8_t{128});
    trial.encode(*frame, HostClock::now());
    trial.finish();
    return encoded > 0;
}

} // namespace

// The callback is by value for the callers; each candidate needs its own copy.
// NOLINTBEGIN(performance-unnecessary-value-param)
std::unique_ptr<VideoEncoder> openVideoEncoder(const EncoderRequest& request,
                                               VideoEncoder::OnEncodedFrame onEncodedFrame)
// NOLINTEND(performance-unnecessary-value-param)
{
    auto status = AVERROR(EINVAL);
    if (request.size.width() <= 0 || request.size.height() <= 0 || request.framesPerSecond <= 0 ||
        request.bitsPerSecond <= 0) {
        throw EncoderError(status);
    }
    for (const auto& candidate : encoderCandidates()) {
        const bool isHardware = candidate.kind == EncoderKind::hardware;
        if (candidate.codec != request.codec || (isHardware && request.choice == EncoderChoice::software)) {
            continue;
        }
        try {
            if (isHardware && !encodesFrame(candidate, request)) {
                continue;
            }
            return std::make_unique<LibavVideoEncoder>(candidate, request, onEncodedFrame);
        } catch (const ffmpeg::FfmpegError& error) {
            status = error.status();
        }
    }
    throw EncoderError(status);
}

} // namespace quelto
