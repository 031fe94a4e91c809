// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace quelto::pipewire {

/// Blocks of PCM on their way from the sound server's real-time thread to an ordinary one.
///
/// Thread: one writer and one reader; neither waits, and the writer allocates nothing. A block that finds no room is
/// counted and left out.
class BlockRing {
public:
    struct Block {
        HostTime time;
        int frames = 0;
        int channels = 0;
    };

    BlockRing(std::size_t valueCapacity, std::size_t blockCapacity);

    /// Writer. The block's frames × channels values, interleaved.
    bool tryWrite(const Block& block, const float* values) noexcept;

    /// Reader. Puts the values in the place of those that are there.
    std::optional<Block> tryRead(std::vector<float>& values);

    /// Blocks left out since the beginning.
    std::uint64_t droppedBlocks() const noexcept { return m_dropped.load(std::memory_order_relaxed); }

private:
    std::vector<float> m_values;
    std::vector<Block> m_blocks;
    // Positions only grow; each is written by one side.
    std::uint64_t m_valuesWritten = 0;
    std::atomic<std::uint64_t> m_valuesRead = 0;
    std::atomic<std::uint64_t> m_blocksWritten = 0;
    std::atomic<std::uint64_t> m_blocksRead = 0;
    std::atomic<std::uint64_t> m_dropped = 0;
};

} // namespace quelto::pipewire
