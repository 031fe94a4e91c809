// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mix/PlacedSource.h"

#include "capture/mix/MixGrid.h"

namespace quelto {

namespace {

// A smaller difference between a timestamp and the end of the previous buffer is jitter; a larger one is a real gap.
constexpr std::int64_t DriftFrames = 1920;

/// The frame index of a time on the grid that starts at `start`, rounded to nearest, halves away from zero.
std::int64_t frameAt(HostTime time, HostTime start)
{
    return std::llround(toSeconds(time - start) * GridRate);
}

} // namespace

PlacedSource::PlacedSource(const MixSource& source, HostTime start, PcmConverterFactory makeConverter)
    : m_buffers(source.buffers.begin(), source.buffers.end())
    , m_gain(source.gain)
    , m_start(start)
    , m_reader(std::move(makeConverter))
    , m_isInOrder(std::ranges::is_sorted(m_buffers, {}, [](const auto& each) { return each->presentationTime; }))
{
}

bool PlacedSource::overlaps(std::int64_t frames)
{
    while (!m_buffers.empty()) {
        if (const auto placed = readNext(); placed && placed->end() > 0 && placed->position < frames) {
            return true;
        }
    }
    return false;
}

void PlacedSource::addTo(std::span<float> block, std::int64_t position)
{
    const auto end = position + static_cast<std::int64_t>(block.size() / GridChannels);
    std::erase_if(m_placed, [position](const Placed& placed) { return placed.end() <= position; });
    // A buffer can begin before the one that precedes it, but only by less than the drift that is ignored. Without the
    // order of the timestamps it can begin anywhere.
    while (!m_buffers.empty() &&
           (!m_isInOrder || frameAt(m_buffers.front()->presentationTime, m_start) < end + DriftFrames)) {
        if (auto placed = readNext(); placed && placed->end() > position) {
            m_placed.push_back(*std::move(placed));
        }
    }
    for (const auto& placed : m_placed) {
        const auto last = std::min(placed.end(), end);
        for (auto frame = std::max(position, placed.position); !placed.pcm.isSilence && frame < last; ++frame) {
            const auto at = static_cast<std::size_t>(frame - position) * GridChannels;
            block[at] += m_gain * placed.pcm.left[frame - placed.position];
            block[at + 1] += m_gain * placed.pcm.right[frame - placed.position];
        }
    }
}

std::optional<PlacedSource::Placed> PlacedSource::readNext()
{
    auto buffer = std::move(m_buffers.front());
    m_buffers.pop_front();
    auto pcm = m_reader.read(*buffer);
    if (!pcm) {
        return std::nullopt;
    }
    auto position = frameAt(buffer->presentationTime, m_start);
    if (m_expected && std::abs(*m_expected - position) < DriftFrames) {
        position = *m_expected;
    }
    // Silence fills pauses and ends at any time. Sound after it keeps its own time.
    m_expected = pcm->isSilence ? std::nullopt : std::optional(position + pcm->frames);
    return Placed{.position = position, .pcm = *std::move(pcm), .buffer = std::move(buffer)};
}

} // namespace quelto
