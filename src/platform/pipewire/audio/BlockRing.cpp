// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/BlockRing.h"

namespace quelto::pipewire {

BlockRing::BlockRing(std::size_t valueCapacity, std::size_t blockCapacity)
    : m_values(valueCapacity)
    , m_blocks(blockCapacity)
{
}

bool BlockRing::tryWrite(const Block& block, const float* values) noexcept
{
    const std::size_t count = static_cast<std::size_t>(block.frames) * static_cast<std::size_t>(block.channels);
    const std::uint64_t written = m_blocksWritten.load(std::memory_order_relaxed);
    const std::uint64_t valuesInside = m_valuesWritten - m_valuesRead.load(std::memory_order_acquire);
    const std::uint64_t blocksInside = written - m_blocksRead.load(std::memory_order_acquire);
    if (valuesInside + count > m_values.size() || blocksInside >= m_blocks.size()) {
        m_dropped.fetch_add(1, std::memory_order_relaxed);
        return false;
    }
    const std::size_t begin = m_valuesWritten % m_values.size();
    const std::size_t untilEnd = std::min(count, m_values.size() - begin);
    std::copy_n(values, untilEnd, m_values.data() + begin);
    std::copy_n(values + untilEnd, count - untilEnd, m_values.data());
    m_blocks[written % m_blocks.size()] = block;
    m_valuesWritten += count;
    m_blocksWritten.store(written + 1, std::memory_order_release);
    return true;
}

std::optional<BlockRing::Block> BlockRing::tryRead(std::vector<float>& values)
{
    const std::uint64_t read = m_blocksRead.load(std::memory_order_relaxed);
    if (read == m_blocksWritten.load(std::memory_order_acquire)) {
        return std::nullopt;
    }
    const Block block = m_blocks[read % m_blocks.size()];
    const std::size_t count = static_cast<std::size_t>(block.frames) * static_cast<std::size_t>(block.channels);
    const std::uint64_t valuesRead = m_valuesRead.load(std::memory_order_relaxed);
    const std::size_t begin = valuesRead % m_values.size();
    const std::size_t untilEnd = std::min(count, m_values.size() - begin);
    values.resize(count);
    std::copy_n(m_values.data() + begin, untilEnd, values.data());
    std::copy_n(m_values.data(), count - untilEnd, values.data() + untilEnd);
    m_valuesRead.store(valuesRead + count, std::memory_order_release);
    m_blocksRead.store(read + 1, std::memory_order_release);
    return block;
}

} // namespace quelto::pipewire
