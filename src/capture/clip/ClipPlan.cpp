// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/ClipPlan.h"

#include <limits>

namespace quelto {

namespace {

using namespace std::chrono_literals;

// How long the last frame is shown if the clip does not end later.
constexpr HostDuration LastFrameDuration = std::chrono::round<HostDuration>(std::chrono::duration<double>(1.0 / 60));
// The longest distance of key frames while the screen changes, so a clip starts at most this much too early.
constexpr HostDuration KeyFrameInterval = 1s;
constexpr HostDuration MaxClipLength = 1h;
constexpr HostDuration MaxAudioDistance = 24h;

/// Saturates: timestamps of a broken device can have any value.
HostDuration difference(HostTime later, HostTime earlier)
{
    std::int64_t result = 0;
    const auto from = earlier.time_since_epoch().count();
    if (__builtin_sub_overflow(later.time_since_epoch().count(), from, &result)) {
        return from < 0 ? HostDuration::max() : HostDuration::min();
    }
    return HostDuration(result);
}

HostTime moved(HostTime time, HostDuration by)
{
    std::int64_t result = 0;
    if (__builtin_add_overflow(time.time_since_epoch().count(), by.count(), &result)) {
        return by.count() < 0 ? HostTime::min() : HostTime::max();
    }
    return HostTime(HostDuration(result));
}

} // namespace

std::optional<ClipPlan> planClip(const EncodedFrames& video, HostTime endTime, int seconds)
{
    const auto first =
        std::find_if(video.begin(), video.end(), [](const EncodedFramePtr& sample) { return sample->isKeyframe(); });
    if (first == video.end()) {
        return std::nullopt;
    }
    const auto wantedStart = moved(endTime, -std::chrono::seconds(seconds));
    auto start = first;
    for (auto sample = first; sample != video.end(); ++sample) {
        if ((*sample)->isKeyframe() && (*sample)->presentationTime <= wantedStart) {
            start = sample;
        }
    }
    // An unchanged screen delivers no frames, so the frame that shows it may be much older. Such frames move to the
    // clip's start instead of making the clip longer.
    const auto earliestStart = moved(wantedStart, -KeyFrameInterval);
    const auto videoEnd = moved(video.back()->presentationTime, LastFrameDuration);
    return ClipPlan{start - video.begin(), std::max((*start)->presentationTime, earliestStart),
                    std::max(endTime, videoEnd)};
}

bool hasOwnTracks(const ReplaySnapshot& snapshot)
{
    return !snapshot.mic.isEmpty() || !snapshot.chat.isEmpty();
}

AudioBuffers audioNear(const AudioBuffers& samples, HostTime start)
{
    const auto isFar = [start](const AudioBufferPtr& sample) {
        const auto distance = difference(sample->presentationTime, start);
        return distance > MaxAudioDistance || distance < -MaxAudioDistance;
    };
    if (std::none_of(samples.begin(), samples.end(), isFar)) {
        return samples;
    }
    AudioBuffers near;
    std::copy_if(samples.begin(), samples.end(), std::back_inserter(near), [&](const auto& s) { return !isFar(s); });
    return near;
}

bool isPlausible(const ClipPlan& plan)
{
    const auto length = difference(plan.end, plan.start);
    return length > HostDuration::zero() && length <= MaxClipLength;
}

} // namespace quelto
