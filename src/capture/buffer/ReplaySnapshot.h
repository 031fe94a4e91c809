// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "samples/AudioSample.h"
#include "samples/VideoSample.h"

namespace quelto {

/// The four tracks of the replay buffer as they were at one instant, oldest sample first. Shares the samples.
struct ReplaySnapshot {
    VideoSamples video;
    AudioSamples audio;
    AudioSamples mic;
    AudioSamples chat;
};

} // namespace quelto
