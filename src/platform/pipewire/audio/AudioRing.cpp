// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/AudioRing.h"

#include <bit>

namespace quelto::pipewire {

namespace {

std::size_t valueCount(const AudioRing::Block& block)
{
    return static_cast<std::size_t>(block.frames) * static_cast<std::size_t>(block.channels);
}

} // namespace

AudioRing::AudioRing(std::uint32_t capacity)
    // The library's positions wrap around at 2^32, which only a power of two divides.
    : m_bytes(std::bit_ceil(capacity))
{
}

bool AudioRing::tryWrite(const Block& block, const float* values) noexcept
{
    std::uint32_t position = 0;
    const auto used = static_cast<std::size_t>(spa_ringbuffer_get_write_index(&m_ring, &position));
    const std::span samples(values, valueCount(block));
    if (used + sizeof block + samples.size_bytes() > m_bytes.size()) {
        m_dropped.fetch_add(1, std::memory_order_relaxed);
        return false;
    }
    write(position, std::as_bytes(std::span(&block, 1)));
    write(position, std::as_bytes(samples));
    // Only now, so that the reader never sees a block without its values.
    spa_ringbuffer_write_update(&m_ring, static_cast<std::int32_t>(position));
    return true;
}

std::optional<AudioRing::Block> AudioRing::tryRead(std::vector<float>& values)
{
    std::uint32_t position = 0;
    if (spa_ringbuffer_get_read_index(&m_ring, &position) <= 0) {
        return std::nullopt;
    }
    Block block;
    read(position, std::as_writable_bytes(std::span(&block, 1)));
    values.resize(valueCount(block));
    read(position, std::as_writable_bytes(std::span(values)));
    spa_ringbuffer_read_update(&m_ring, static_cast<std::int32_t>(position));
    return block;
}

void AudioRing::write(std::uint32_t& position, std::span<const std::byte> bytes) noexcept
{
    const auto capacity = static_cast<std::uint32_t>(m_bytes.size());
    const auto length = static_cast<std::uint32_t>(bytes.size());
    spa_ringbuffer_write_data(&m_ring, m_bytes.data(), capacity, position % capacity, bytes.data(), length);
    position += length;
}

void AudioRing::read(std::uint32_t& position, std::span<std::byte> bytes) noexcept
{
    const auto capacity = static_cast<std::uint32_t>(m_bytes.size());
    const auto length = static_cast<std::uint32_t>(bytes.size());
    spa_ringbuffer_read_data(&m_ring, m_bytes.data(), capacity, position % capacity, bytes.data(), length);
    position += length;
}

} // namespace quelto::pipewire
