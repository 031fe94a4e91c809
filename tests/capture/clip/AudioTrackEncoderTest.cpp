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

TEST(AudioTrackEncoder, SilenceHasTheSamePacketsAsTheEncoderGives)
{
    // Shorter than 256 packets: the encoder writes its name into that one.
    for (const auto frames : {1LL, 1024LL, 4096LL, 48000LL, 131072LL, 131073LL, 250001LL}) {
        const auto end = Start + HostDuration(frames * 1'000'000'000 / 48000);
        auto mix = AudioMixer::silence(Start, end);
        AacEncoder encoder(128000);
        std::vector<AacPacket> expected;
        for (auto block = mix.next(); !block.empty(); block = mix.next()) {
            std::ranges::move(encoder.encode(block), std::back_inserter(expected));
        }
        std::ranges::move(encoder.finish(), std::back_inserter(expected));
        AudioTrackEncoder track(AudioMixer::silence(Start, end), 128000, Mp4TrackState::disabled);
        std::vector<AacPacket> packets;
        while (auto packet = track.next()) {
            packets.push_back(*std::move(packet));
        }
        ASSERT_EQ(packets.size(), expected.size()) << frames;
        for (std::size_t i = 0; i < packets.size(); ++i) {
            ASSERT_EQ(packets[i], expected[i]) << "packet " << i << " of " << packets.size();
        }
    }
}

} // namespace
} // namespace quelto
