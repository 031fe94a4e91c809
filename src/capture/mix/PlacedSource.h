// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "capture/mix/PcmReader.h"

#include <deque>
#include <span>
#include <vector>

namespace quelto {

/// A track of the replay buffer and its gain in the mix.
struct MixSource {
    AudioBuffers buffers;
    float gain = 1.0F;
};

/// Places the buffers of one source on a grid of 48,000 frames a second by their timestamps, and adds them to blocks of
/// it in order. Buffers are read shortly before their block, and released after it.
///
/// Positions are frame counts from the start, never sums of rounded durations.
class PlacedSource {
public:
    /// Frame 0 of the grid is at `start`.
    PlacedSource(const MixSource& source, HostTime start, PcmConverterFactory makeConverter);

    /// Whether any buffer overlaps the first `frames` frames of the grid. Reads up to that buffer; use a source of its
    /// own for this question.
    bool overlaps(std::int64_t frames);

    /// Adds this source to an interleaved stereo block whose first frame has that position. Each block follows the
    /// previous one.
    void addTo(std::span<float> block, std::int64_t position);

private:
    struct Placed {
        std::int64_t position = 0;
        StereoPcm pcm;
        /// Owns what pcm points to.
        AudioBufferPtr buffer;
        std::int64_t end() const { return position + pcm.frames; }
    };

    std::optional<Placed> readNext();

    /// Those that are not read yet.
    std::deque<AudioBufferPtr> m_buffers;
    float m_gain;
    HostTime m_start;
    PcmReader m_reader;
    /// The end of the previous buffer.
    std::optional<std::int64_t> m_expected;
    /// Buffers that were read and do not end before the next block.
    std::deque<Placed> m_placed;
    bool m_isInOrder;
};

} // namespace quelto
