// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"
#include "media/types/EncodedFrame.h"

namespace quelto {

/// The four tracks of the replay buffer at one instant, oldest sample first. Shares the samples.
struct ReplaySnapshot {
    EncodedFrames video;
    AudioBuffers audio;
    AudioBuffers mic;
    AudioBuffers chat;
};

} // namespace quelto
