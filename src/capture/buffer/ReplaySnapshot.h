// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioSample.h"
#include "media/types/VideoSample.h"

namespace quelto {

/// The four tracks of the replay buffer as they were at one instant, oldest sample first. Shares the samples.
struct ReplaySnapshot {
    VideoSamples video;
    AudioSamples audio;
    AudioSamples mic;
    AudioSamples chat;
};

} // namespace quelto
