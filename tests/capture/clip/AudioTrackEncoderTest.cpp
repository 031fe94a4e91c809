// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/AudioTrackEncoder.h"

#include "capture/mix/AudioMixer.h"

#include <gtest/gtest.h>

#include <atomic>

#include <sys/resource.h>

namespace quelto {
namespace {

constexpr HostTime Start{std::chrono::hours(1)};

/// Notes the nice value of the thread that it runs on.
class NiceValueProbe final : public PcmConverter {
public:
    explicit NiceValueProbe(std::atomic<int>& niceValue)
        : m_niceValue(niceValue)
    {
    }

    std::optional<PlanarPcm> convert(const AudioBuffer& buffer) override
    {
        m_niceValue = getpriority(PRIO_PROCESS, 0);
        return PlanarPcm{std::vector<float>(static_cast<std::size_t>(buffer.frames))};
    }

private:
    std::atomic<int>& m_niceValue;
};

TEST(AudioTrackEncoder, MixesAtLowPriority)
{
    std::atomic<int> niceValue = 0;
    const AudioMixer mixer([&](const AudioFormat&) { return std::make_unique<NiceValueProbe>(niceValue); });
    auto buffer = std::make_shared<AudioBuffer>();
    buffer->presentationTime = Start;
    buffer->format.encoding = PcmEncoding::int16;
    buffer->frames = 4800;
    buffer->data.resize(4800 * 2 * sizeof(std::int16_t));
    auto mix = mixer.mix({{.buffers = {buffer}, .gain = 1}}, Start, Start + std::chrono::milliseconds(100));
    niceValue = 0;
    AudioTrackEncoder track(std::move(mix), 128000, Mp4TrackState::enabled);
    while (track.next()) { }
    EXPECT_GE(niceValue, 10);
}

} // namespace
} // namespace quelto
