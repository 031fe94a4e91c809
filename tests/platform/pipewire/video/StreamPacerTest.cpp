// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/StreamPacer.h"

#include <gtest/gtest.h>

#include <random>

namespace quelto::pipewire {
namespace {

using namespace std::chrono_literals;

constexpr HostTime PacerStart{1000s};

struct Arrival {
    HostTime frameTime;
    HostTime now;
};

/// Runs a pacer on a clock that only the test moves.
class PacerRun {
public:
    explicit PacerRun(int framesPerSecond)
        : m_pacer([this](int& number, HostTime time) {
            if (m_failures > 0) {
                --m_failures;
                return false;
            }
            delivered.push_back(number);
            times.push_back(time);
            deliveredAt.push_back(m_now);
            return true;
        })
    {
        m_pacer.start(PacerStart, framesPerSecond);
    }

    void failNext(int count) { m_failures = count; }

    void add(const Arrival& arrival)
    {
        waitUntil(arrival.now);
        m_pacer.add(m_count++, arrival.frameTime);
    }

    void waitUntil(HostTime time)
    {
        while (const auto wake = m_pacer.wakeTime()) {
            if (*wake > time) {
                break;
            }
            m_now = std::max(m_now, *wake);
            m_pacer.advance(m_now);
        }
        m_now = std::max(m_now, time);
    }

    std::vector<int> delivered;
    std::vector<HostTime> times;
    std::vector<HostTime> deliveredAt;

private:
    StreamPacer<int> m_pacer;
    HostTime m_now = PacerStart;
    int m_count = 0;
    int m_failures = 0;
};

/// Frames at a steady rate whose times and arrivals vary.
struct Source {
    double framesPerSecond = 60;
    /// The difference of the first frame to the start of a slot.
    HostDuration phase = 0ns;
    /// The most by which the time of a frame is early or late.
    HostDuration jitter = 0ns;
    /// From the time of a frame to its arrival. Negative if times are ahead of the clock.
    HostDuration delay = 0ns;
    HostDuration delayJitter = 0ns;

    std::vector<Arrival> frames(int count) const
    {
        std::mt19937 random(7);
        const auto vary = [&random](HostDuration most) {
            return HostDuration(std::uniform_int_distribution<std::int64_t>(-most.count(), most.count())(random));
        };
        std::vector<Arrival> arrivals;
        HostTime now = PacerStart;
        for (int i = 0; i < count; ++i) {
            const HostTime time = PacerStart + phase + fromSeconds(i / framesPerSecond) + vary(jitter);
            now = std::max(now, time + delay + vary(delayJitter));
            arrivals.push_back({time, now});
        }
        return arrivals;
    }
};

TEST(StreamPacer, FrameInAFreeSlotIsDeliveredAtOnce)
{
    PacerRun run(60);
    run.add({PacerStart + 5ms, PacerStart + 7ms});
    run.add({PacerStart + 20ms, PacerStart + 22ms});
    EXPECT_EQ(run.delivered, (std::vector{0, 1}));
    EXPECT_EQ(run.deliveredAt, (std::vector<HostTime>{PacerStart + 7ms, PacerStart + 22ms}));
}

TEST(StreamPacer, FrameInATakenSlotWaitsForTheNext)
{
    PacerRun run(50);
    run.add({PacerStart + 1ms, PacerStart + 1ms});
    run.add({PacerStart + 9ms, PacerStart + 9ms});
    EXPECT_EQ(run.delivered, std::vector{0});
    run.waitUntil(PacerStart + 1s);
    EXPECT_EQ(run.delivered, (std::vector{0, 1}));
    EXPECT_EQ(run.deliveredAt.back(), PacerStart + 20ms + StreamPacer<int>::Patience);
    EXPECT_EQ(run.times.back(), PacerStart + 9ms) << "a frame keeps its time";
}

TEST(StreamPacer, NewerFrameReplacesTheOneThatWaits)
{
    PacerRun run(50);
    for (const auto offset : {1ms, 5ms, 10ms, 15ms}) {
        run.add({PacerStart + offset, PacerStart + offset});
    }
    run.waitUntil(PacerStart + 1s);
    EXPECT_EQ(run.delivered, (std::vector{0, 3}));
}

TEST(StreamPacer, HeldFrameTakesTheSlotInWhichItIsDelivered)
{
    PacerRun run(50);
    run.add({PacerStart + 1ms, PacerStart + 1ms});
    run.add({PacerStart + 10ms, PacerStart + 10ms});
    run.add({PacerStart + 25ms, PacerStart + 25ms});
    EXPECT_EQ(run.delivered, (std::vector{0, 1})) << "a frame of the next slot has arrived";
    run.waitUntil(PacerStart + 1s);
    EXPECT_EQ(run.delivered, (std::vector{0, 1, 2}));
    EXPECT_EQ(run.deliveredAt.back(), PacerStart + 40ms + StreamPacer<int>::Patience);
}

TEST(StreamPacer, SourceAtTheSameRateLosesNothingToJitter)
{
    for (const auto phase : {0ms, 1ms, 4ms, 8ms, 12ms, 16ms}) {
        for (const auto jitter : {0ms, 2ms, 5ms, 8ms}) {
            for (const auto delay : {-28ms, -10ms, 0ms, 2ms, 8ms, 15ms, 30ms, 65ms}) {
                for (const auto delayJitter : {0ms, 5ms, 15ms}) {
                    PacerRun run(60);
                    const Source source{.phase = phase, .jitter = jitter, .delay = delay, .delayJitter = delayJitter};
                    for (const Arrival& arrival : source.frames(300)) {
                        run.add(arrival);
                    }
                    run.waitUntil(PacerStart + 10s);
                    EXPECT_EQ(run.delivered.size(), 300u)
                        << "phase " << phase.count() << " jitter " << jitter.count() << " delay " << delay.count()
                        << " delay jitter " << delayJitter.count();
                }
            }
        }
    }
}

TEST(StreamPacer, FasterSourceIsThinnedWithoutDrift)
{
    for (const double rate : {61.0, 75.0, 120.0, 144.0, 240.0}) {
        for (const auto delay : {-28ms, 0ms, 8ms, 30ms}) {
            PacerRun run(60);
            const Source source{
                .framesPerSecond = rate, .phase = 3ms, .jitter = 1ms, .delay = delay, .delayJitter = 1ms};
            for (const Arrival& arrival : source.frames(static_cast<int>(rate * 100))) {
                run.add(arrival);
            }
            run.waitUntil(PacerStart + 200s);
            EXPECT_NEAR(static_cast<double>(run.delivered.size()), 6000, 4)
                << "rate " << rate << " delay " << delay.count();
            EXPECT_EQ(run.delivered.back(), static_cast<int>(rate * 100) - 1);
        }
    }
}

TEST(StreamPacer, FramesOfAThinnedSourceAreEvenlySpaced)
{
    // A delay must not choose the frames, wherever it is within a slot.
    PacerRun run(60);
    const Source source{.framesPerSecond = 120, .phase = 3ms, .delay = 15ms, .delayJitter = 15ms};
    for (const Arrival& arrival : source.frames(1200)) {
        run.add(arrival);
    }
    EXPECT_NEAR(static_cast<double>(run.times.size()), 600, 2);
    for (std::size_t i = 2; i < run.times.size(); ++i) {
        EXPECT_NEAR(toSeconds(run.times[i] - run.times[i - 1]), 1.0 / 60, 0.0001) << i;
    }
}

TEST(StreamPacer, SlowerSourceIsNotDelayed)
{
    PacerRun run(60);
    const Source source{.framesPerSecond = 30, .phase = 3ms, .delay = 5ms};
    const auto frames = source.frames(100);
    for (const Arrival& arrival : frames) {
        run.add(arrival);
    }
    ASSERT_EQ(run.deliveredAt.size(), frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        EXPECT_EQ(run.deliveredAt[i], frames[i].now);
    }
}

TEST(StreamPacer, FrameThatCannotBeDeliveredIsOfferedAgainInTheNextSlots)
{
    PacerRun run(50);
    run.failNext(3);
    run.add({PacerStart + 1ms, PacerStart + 1ms});
    run.waitUntil(PacerStart + 1s);
    EXPECT_EQ(run.delivered, std::vector{0});
    EXPECT_EQ(run.deliveredAt.back(), PacerStart + 60ms);
}

TEST(StreamPacer, HoldsTheNewestFrameUntilTheStart)
{
    std::vector<int> delivered;
    StreamPacer<int> pacer([&](int& number, HostTime) {
        delivered.push_back(number);
        return true;
    });
    pacer.add(1, PacerStart - 2s);
    pacer.add(2, PacerStart - 1s);
    EXPECT_FALSE(pacer.wakeTime());
    EXPECT_TRUE(delivered.empty());
    pacer.start(PacerStart, 60);
    ASSERT_EQ(pacer.wakeTime(), PacerStart);
    pacer.advance(PacerStart);
    EXPECT_EQ(delivered, std::vector{2});
    EXPECT_FALSE(pacer.wakeTime());
}

TEST(StreamPacer, DroppedFrameIsNotDelivered)
{
    std::vector<int> delivered;
    StreamPacer<int> pacer([&](int& number, HostTime) {
        delivered.push_back(number);
        return true;
    });
    pacer.start(PacerStart, 60);
    pacer.add(1, PacerStart);
    pacer.add(2, PacerStart + 1ms);
    ASSERT_TRUE(pacer.held());
    EXPECT_EQ(*pacer.held(), 2);
    pacer.drop();
    EXPECT_FALSE(pacer.wakeTime());
    pacer.advance(PacerStart + 1s);
    EXPECT_EQ(delivered, std::vector{1});
}

} // namespace
} // namespace quelto::pipewire
