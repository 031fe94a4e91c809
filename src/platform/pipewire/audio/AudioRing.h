// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <spa/utils/ringbuffer.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quelto::pipewire {

/// A lock-free ring buffer that carries blocks of PCM from the sound server's real-time thread to an ordinary thread.
///
/// Thread: one writer and one reader. Neither waits, and the writer does not allocate. A block that does not fit is
/// dropped and counted.
class AudioRing {
public:
    struct Block {
        HostTime time;
        int frames = 0;
        int channels = 0;
    };

    /// Rounds the capacity up to a power of two. Units: bytes, of which each block takes sizeof(Block) and its values.
    explicit AudioRing(std::uint32_t capacity);

    /// Writer: takes the block's frames × channels values, interleaved.
    bool tryWrite(const Block& block, const float* values) noexcept;

    /// Reader: replaces the contents of `values` with the oldest block's.
    std::optional<Block> tryRead(std::vector<float>& values);

    /// The number of blocks dropped so far. Any thread.
    std::uint64_t droppedBlocks() const noexcept { return m_dropped.load(std::memory_order_relaxed); }

private:
    void write(std::uint32_t& position, std::span<const std::byte> bytes) noexcept;
    void read(std::uint32_t& position, std::span<std::byte> bytes) noexcept;

    std::vector<std::byte> m_bytes;
    spa_ringbuffer m_ring = {};
    std::atomic<std::uint64_t> m_dropped = 0;
};

} // namespace quelto::pipewire
