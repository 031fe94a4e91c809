// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioDesktop.h"
#include "platform/pipewire/core/PipeWireConnection.h"

#include <gtest/gtest.h>
#include <pipewire/impl.h>

namespace quelto::pipewire {
namespace {

/// A second session manager, with another default output.
class SecondSessionManager {
public:
    explicit SecondSessionManager(const char* sink)
        : m_loop(pw_thread_loop_new("second", nullptr))
        , m_context(makeContext(pw_thread_loop_get_loop(m_loop.get())))
        , m_core(pw_context_connect(m_context.get(), nullptr, 0))
        , m_metadata(pw_context_create_metadata(m_context.get(), "default", nullptr, 0), pw_impl_metadata_destroy)
    {
        writeSink(sink);
        m_export.reset(pw_core_export(m_core.get(), PW_TYPE_INTERFACE_Metadata, nullptr,
                                      pw_impl_metadata_get_implementation(m_metadata.get()), 0));
        pw_thread_loop_start(m_loop.get());
    }
    ~SecondSessionManager() { pw_thread_loop_stop(m_loop.get()); }
    SecondSessionManager(const SecondSessionManager&) = delete;
    SecondSessionManager& operator=(const SecondSessionManager&) = delete;

    void setSink(const char* sink)
    {
        const LoopLock lock(m_loop.get());
        writeSink(sink);
    }

    /// Changes the default output, and answers the server's requests only after that.
    void setSinkAfter(const char* sink, const std::function<void()>& action)
    {
        const LoopLock lock(m_loop.get());
        action();
        writeSink(sink);
    }

private:
    void writeSink(const char* sink)
    {
        pw_impl_metadata_set_property(m_metadata.get(), PW_ID_CORE, "default.audio.sink", "Spa:String:JSON", sink);
    }

    ThreadLoopPtr m_loop;
    ContextPtr m_context;
    CorePtr m_core;
    std::unique_ptr<pw_impl_metadata, decltype(&pw_impl_metadata_destroy)> m_metadata;
    ProxyPtr m_export;
};

class DefaultDeviceTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (desktopVariable("QUELTO_TEST_SPEAKER").isEmpty()) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
    }

    static bool becomesDefault(PipeWireConnection& connection, const QString& name)
    {
        EXPECT_TRUE(connection.waitUntilReady(std::chrono::seconds(5)));
        return becomesTrue([&] { return isDefault(connection, name); });
    }
    static bool isDefault(PipeWireConnection& connection, const QString& name)
    {
        const PipeWireConnection::Lock lock(connection);
        return connection.isReady() && connection.graph().defaultSink == name;
    }

    const QString m_speaker = desktopVariable("QUELTO_TEST_SPEAKER");
};

TEST_F(DefaultDeviceTest, IsFollowedAfterASecondSessionManagerLeft)
{
    PipeWireConnection before;
    PipeWireConnection between;
    ASSERT_TRUE(becomesDefault(before, m_speaker));
    {
        const SecondSessionManager other(R"({"name":"test_other"})");
        EXPECT_TRUE(becomesDefault(before, QStringLiteral("test_other")));
        EXPECT_TRUE(becomesDefault(between, QStringLiteral("test_other")));
    }
    EXPECT_TRUE(becomesDefault(before, m_speaker));
    EXPECT_TRUE(becomesDefault(between, m_speaker));

    const LoadedModule headset({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_headset")});
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), QStringLiteral("test_headset")});
    EXPECT_TRUE(becomesDefault(before, QStringLiteral("test_headset")));
    EXPECT_TRUE(becomesDefault(between, QStringLiteral("test_headset")));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), m_speaker});
    EXPECT_TRUE(becomesDefault(before, m_speaker));
}

TEST_F(DefaultDeviceTest, IsThatOfTheLatestSessionManager)
{
    PipeWireConnection connection;
    ASSERT_TRUE(becomesDefault(connection, m_speaker));
    SecondSessionManager earlier(R"({"name":"test_earlier"})");
    EXPECT_TRUE(becomesDefault(connection, QStringLiteral("test_earlier")));
    {
        const SecondSessionManager later(R"({"name":"test_later"})");
        EXPECT_TRUE(becomesDefault(connection, QStringLiteral("test_later")));
        earlier.setSink(R"({"name":"test_changed"})");
        EXPECT_FALSE(becomesTrue([&] { return !isDefault(connection, QStringLiteral("test_later")); }, 0.5));
    }
    EXPECT_TRUE(becomesDefault(connection, QStringLiteral("test_changed")));
}

TEST_F(DefaultDeviceTest, IsFollowedWhenItChangesWhileAnotherProgramConnects)
{
    PipeWireConnection connection;
    PipeWireConnection other;
    SecondSessionManager manager(R"({"name":"test_first"})");
    ASSERT_TRUE(becomesDefault(connection, QStringLiteral("test_first")));
    manager.setSinkAfter(R"({"name":"test_second"})", [&] {
        ASSERT_TRUE(other.start());
        // Until the manager has the server's request for the new program. Nothing reports that.
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    });
    EXPECT_TRUE(becomesDefault(other, QStringLiteral("test_second")));
    EXPECT_TRUE(becomesDefault(connection, QStringLiteral("test_second")));
}

} // namespace
} // namespace quelto::pipewire
