// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/AacEncoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quelto {
namespace {

std::vector<float> noise(std::size_t frames)
{
    std::vector<float> values(frames * 2);
    unsigned state = 1;
    for (auto& value : values) {
        state = state * 1664525U + 1013904223U;
        value = static_cast<float>(state >> 8) / 16777216.0F - 0.5F;
    }
    return values;
}

std::vector<AacPacket> encodeAll(AacEncoder& encoder, std::span<const float> pcm, std::size_t blockSize)
{
    std::vector<AacPacket> packets;
    for (std::size_t offset = 0; offset < pcm.size(); offset += blockSize) {
        const auto part = encoder.encode(pcm.subspan(offset, std::min(blockSize, pcm.size() - offset)));
        packets.insert(packets.end(), part.begin(), part.end());
    }
    const auto rest = encoder.finish();
    packets.insert(packets.end(), rest.begin(), rest.end());
    return packets;
}

TEST(AacEncoder, OutputsEnoughPacketsForAnyLength)
{
    for (const std::size_t frames : {1U, 1023U, 1024U, 1025U, 4096U, 48000U}) {
        AacEncoder encoder(128000);
        const auto packets = encodeAll(encoder, noise(frames), 8192);
        EXPECT_GE(static_cast<std::int64_t>(packets.size()),
                  AacEncoder::packetCountFor(static_cast<std::int64_t>(frames), encoder.encoderDelay()))
            << frames;
    }
}

TEST(AacEncoder, PacketsDoNotDependOnInputBlockSize)
{
    const auto pcm = noise(20000);
    AacEncoder whole(192000);
    AacEncoder pieces(192000);
    EXPECT_EQ(encodeAll(whole, pcm, pcm.size()), encodeAll(pieces, pcm, 2 * 333));
}

TEST(AacEncoder, KeepsTheTargetBitRate)
{
    AacEncoder encoder(192000);
    std::size_t bytes = 0;
    for (const auto& packet : encodeAll(encoder, noise(480000), 8192)) {
        bytes += packet.size();
    }
    EXPECT_NEAR(static_cast<double>(bytes) * 8 / 10, 192000, 20000);
}

TEST(AacEncoder, SilenceEncodesToIdenticalPackets)
{
    AacEncoder encoder(128000);
    const auto packets = encodeAll(encoder, std::vector<float>(48000 * 2), 8192);
    ASSERT_GT(packets.size(), 20U);
    for (std::size_t i = 4; i + 2 < packets.size(); ++i) {
        EXPECT_EQ(packets[i], packets[3]) << i;
    }
}

TEST(AacEncoder, ProvidesDecoderConfigurationAndDelay)
{
    const AacEncoder encoder(128000);
    EXPECT_GE(encoder.decoderConfiguration().size(), 2U);
    EXPECT_EQ(encoder.encoderDelay(), 1024);
}

TEST(AacEncoder, AcceptsInvalidSampleValues)
{
    auto pcm = noise(8192);
    pcm[100] = std::numeric_limits<float>::quiet_NaN();
    pcm[5000] = std::numeric_limits<float>::infinity();
    pcm[5001] = -std::numeric_limits<float>::max();
    AacEncoder encoder(128000);
    EXPECT_GE(encodeAll(encoder, pcm, 8192).size(), 9U);
}

} // namespace
} // namespace quelto
