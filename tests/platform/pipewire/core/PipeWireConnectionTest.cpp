// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/core/PipeWireConnection.h"

#include "tests/platform/pipewire/audio/AudioDesktop.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <latch>
#include <thread>

namespace quelto::pipewire {
namespace {

/// Runs the function on several threads at the same moment. Returns how many times it was true.
int onManyThreads(const std::function<bool()>& function)
{
    constexpr int Threads = 8;
    std::latch ready(Threads);
    std::atomic<int> count = 0;
    std::vector<std::jthread> threads;
    threads.reserve(Threads);
    for (int i = 0; i < Threads; ++i) {
        threads.emplace_back([&] {
            ready.arrive_and_wait();
            count += function() ? 1 : 0;
        });
    }
    threads.clear();
    return count;
}

class PipeWireConnectionTest : public testing::Test {
protected:
    void TearDown() override { qputenv("XDG_RUNTIME_DIR", m_before); }

    static bool startAndUseLoop(PipeWireConnection& connection)
    {
        if (!connection.start()) {
            return false;
        }
        const PipeWireConnection::Lock lock(connection);
        return connection.loop() && !connection.isReady() && !connection.core();
    }

    QByteArray m_before = qgetenv("XDG_RUNTIME_DIR");
};

TEST_F(PipeWireConnectionTest, StartsOneLoopForManyThreads)
{
    const QTemporaryDir folder;
    qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
    for (int round = 0; round < 10; ++round) {
        PipeWireConnection connection;
        EXPECT_EQ(onManyThreads([&] { return startAndUseLoop(connection); }), 8);
    }
}

TEST_F(PipeWireConnectionTest, ConnectsOnceForManyThreads)
{
    if (desktopVariable("QUELTO_TEST_SPEAKER").isEmpty()) {
        GTEST_SKIP() << "runs on the private desktop only";
    }
    PipeWireConnection connection;
    std::mutex mutex;
    std::set<pw_core*> cores;
    EXPECT_EQ(onManyThreads([&] {
                  const bool isReady = connection.waitUntilReady(std::chrono::seconds(5));
                  const PipeWireConnection::Lock lock(connection);
                  const std::lock_guard guard(mutex);
                  cores.insert(connection.core());
                  return isReady && !connection.graph().nodes.empty();
              }),
              8);
    EXPECT_EQ(cores.size(), 1u);
}

TEST_F(PipeWireConnectionTest, EndsWhileAServerDoesNotAnswer)
{
    if (desktopVariable("QUELTO_TEST_SPEAKER").isEmpty()) {
        GTEST_SKIP() << "runs on the private desktop only";
    }
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("pause")});
    const HostTime before = HostClock::now();
    {
        PipeWireConnection connection;
        EXPECT_TRUE(connection.start());
        EXPECT_FALSE(connection.waitUntilReady(std::chrono::milliseconds(50)));
    }
    EXPECT_LT(toSeconds(HostClock::now() - before), 0.5);
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("resume")});
}

} // namespace
} // namespace quelto::pipewire
