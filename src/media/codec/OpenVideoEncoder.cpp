// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/LibavVideoEncoder.h"
#include "media/codec/VideoEncoder.h"
#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

/// Whether an encoder that opens also works: one picture goes in, and has to come out.
bool givesPictures(const EncoderCandidate& candidate, const EncoderRequest& request)
{
    int samples = 0;
    LibavVideoEncoder trial(candidate, request, [&samples](const EncodedFramePtr&) { ++samples; });
    FramePool pool(request.size, 1);
    const auto picture = pool.tryTake();
    picture->presentationTime = HostClock::now();
    const auto bytes = static_cast<std::size_t>(picture->stride) * static_cast<std::size_t>(request.size.height());
    std::fill_n(picture->luma, bytes, std::uint8_t{16});
    std::fill_n(picture->chroma, bytes / 2, std::uint8_t{128});
    trial.encode(*picture);
    trial.finish();
    return samples > 0;
}

} // namespace

// The header's parameter is by value for its callers' sake; each candidate needs a copy of its own.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
std::unique_ptr<VideoEncoder> openVideoEncoder(const EncoderRequest& request, VideoEncoder::OnSample onSample)
{
    auto status = AVERROR(EINVAL);
    if (request.size.width() <= 0 || request.size.height() <= 0 || request.framesPerSecond <= 0 ||
        request.bitsPerSecond <= 0) {
        throw EncoderError(status);
    }
    for (const auto& candidate : encoderCandidates()) {
        if (candidate.codec != request.codec) {
            continue;
        }
        try {
            if (candidate.proof == EncoderProof::givesPictures && !givesPictures(candidate, request)) {
                continue;
            }
            return std::make_unique<LibavVideoEncoder>(candidate, request, onSample);
        } catch (const ffmpeg::FfmpegError& error) {
            status = error.status();
        }
    }
    throw EncoderError(status);
}

} // namespace quelto
