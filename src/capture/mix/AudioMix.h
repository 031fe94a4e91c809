// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/mix/PlacedSource.h"

#include <span>
#include <vector>

namespace quelto {

/// Stereo audio at 48,000 Hz that is rendered while it is read, block by block, so that its length costs no memory.
///
/// Thread: one at a time.
class AudioMix {
public:
    /// Frames in a block; the last one may have fewer.
    static constexpr std::int64_t blockFrames = 4096;

    /// Without sources it is silence.
    explicit AudioMix(std::int64_t frames = 0, std::vector<PlacedSource> sources = {});

    std::int64_t frames() const noexcept { return m_frames; }
    bool isEmpty() const noexcept { return m_frames == 0; }
    /// Of its whole length.
    bool isSilence() const noexcept { return m_sources.empty(); }

    /// The next block, 32-bit float, interleaved; empty at the end. Valid until the next call.
    std::span<const float> next();

private:
    std::int64_t m_frames;
    std::vector<PlacedSource> m_sources;
    /// The first frame of the next block.
    std::int64_t m_position = 0;
    std::vector<float> m_block;
};

} // namespace quelto
