// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/AudioRing.h"

#include <gmock/gmock.h>

#include <thread>

namespace quelto::pipewire {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t BlockBytes = sizeof(AudioRing::Block);
constexpr std::uint32_t ValueBytes = sizeof(float);

TEST(AudioRing, IsEmptyAtFirst)
{
    AudioRing ring(64);
    std::vector<float> values;
    EXPECT_FALSE(ring.tryRead(values));
}

TEST(AudioRing, KeepsValuesThatWrapAroundItsEnd)
{
    // The second block's values lie across the end.
    static_assert(2 * BlockBytes + 6 * ValueBytes < 64 && 2 * BlockBytes + 12 * ValueBytes > 64);
    AudioRing ring(64);
    const std::array<float, 6> first = {1, 2, 3, 4, 5, 6};
    const std::array<float, 6> second = {7, 8, 9, 10, 11, 12};
    std::vector<float> values;
    ASSERT_TRUE(ring.tryWrite({.time = HostTime(HostDuration(1)), .frames = 3, .channels = 2}, first.data()));
    ASSERT_TRUE(ring.tryRead(values));
    ASSERT_TRUE(ring.tryWrite({.time = HostTime(HostDuration(2)), .frames = 6, .channels = 1}, second.data()));
    const auto block = ring.tryRead(values);
    ASSERT_TRUE(block);
    EXPECT_EQ(block->time, HostTime(HostDuration(2)));
    EXPECT_EQ(block->frames, 6);
    EXPECT_EQ(block->channels, 1);
    EXPECT_THAT(values, ElementsAre(7, 8, 9, 10, 11, 12));
}

TEST(AudioRing, DropsAndCountsBlocksThatDoNotFit)
{
    static_assert(2 * BlockBytes + 8 * ValueBytes == 64);
    AudioRing ring(64);
    const std::array<float, 8> values = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_TRUE(ring.tryWrite({.frames = 3, .channels = 2}, values.data()));
    EXPECT_FALSE(ring.tryWrite({.frames = 2, .channels = 2}, values.data())) << "no room for its values";
    EXPECT_TRUE(ring.tryWrite({.frames = 1, .channels = 2}, values.data()));
    EXPECT_FALSE(ring.tryWrite({.frames = 0, .channels = 2}, values.data())) << "no room for the block itself";
    EXPECT_EQ(ring.droppedBlocks(), 2u);
    std::vector<float> read;
    ASSERT_TRUE(ring.tryRead(read));
    EXPECT_THAT(read, ElementsAre(1, 2, 3, 4, 5, 6));
    ASSERT_TRUE(ring.tryRead(read));
    EXPECT_THAT(read, ElementsAre(1, 2));
    EXPECT_FALSE(ring.tryRead(read));
}

TEST(AudioRing, CarriesEveryBlockBetweenTwoThreads)
{
    AudioRing ring(4096);
    constexpr int Blocks = 20000;
    std::thread writer([&] {
        std::vector<float> values;
        for (int i = 0; i < Blocks; ++i) {
            const int frames = i % 97 + 1;
            values.assign(static_cast<std::size_t>(frames), static_cast<float>(i));
            while (
                !ring.tryWrite({.time = HostTime(HostDuration(i)), .frames = frames, .channels = 1}, values.data())) {
                std::this_thread::yield();
            }
        }
    });
    std::vector<float> values;
    bool isWhole = true;
    for (int i = 0; i < Blocks; ++i) {
        std::optional<AudioRing::Block> block;
        while (!(block = ring.tryRead(values))) {
            std::this_thread::yield();
        }
        isWhole = isWhole && block->time == HostTime(HostDuration(i)) && block->frames == i % 97 + 1 &&
            std::ranges::all_of(values, [&](float value) { return value == static_cast<float>(i); });
    }
    writer.join();
    EXPECT_TRUE(isWhole);
}

} // namespace
} // namespace quelto::pipewire
