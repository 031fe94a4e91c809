// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/RegistryMirror.h"

#include <chrono>
#include <mutex>

namespace quelto::pipewire {

/// The program's connection to the sound server: owns the event loop's thread, mirrors the graph and reconnects.
///
/// It is two clients of the server, one for the graph and one for what listeners create. While a client binds the
/// metadata, the server reads nothing from it until the session manager has answered. And while the session manager
/// configures a stream, the server reads nothing from the session manager until the stream has answered. With a single
/// client both would wait for each other forever.
///
/// While there are listeners, it tries to reconnect to a lost server four times a second.
///
/// Thread: all members except the constructor, start(), waitUntilReady() and Lock need the lock. Only after start() or
/// waitUntilReady() has returned true to a thread may that thread take the lock. Listeners are called
/// on the loop's thread with the lock held. The real-time thread never takes the lock.
class PipeWireConnection {
public:
    class Listener {
    public:
        virtual ~Listener() = default;
        /// The graph is complete and has changed, or the server is connected again.
        virtual void onGraphChanged() = 0;
        /// All objects that were created from the core must be destroyed now.
        virtual void onServerLost() = 0;
    };

    /// Holds the lock of the event loop.
    class Lock : public LoopLock {
    public:
        explicit Lock(PipeWireConnection& connection);
    };

    /// Does not connect yet.
    PipeWireConnection() = default;
    ~PipeWireConnection();
    PipeWireConnection(const PipeWireConnection&) = delete;
    PipeWireConnection& operator=(const PipeWireConnection&) = delete;

    /// Connects if necessary, without waiting for the graph. False if the system lacks resources for the loop.
    ///
    /// Thread: any but the loop's, without the lock.
    bool start();
    /// Connects if necessary and waits until the graph is complete. Returns false at once if no server is running.
    ///
    /// Thread: any but the loop's, without the lock.
    bool waitUntilReady(std::chrono::milliseconds timeout);

    bool isReady() const noexcept { return m_isReady; }
    const Graph& graph() const noexcept { return m_mirror->graph(); }
    pw_registry* registry() const noexcept { return m_mirror->registry(); }
    /// For streams and links.
    pw_core* core() const noexcept { return m_core.get(); }
    pw_loop* loop() const noexcept { return pw_thread_loop_get_loop(m_loop.get()); }

    void addListener(Listener* listener);
    void removeListener(Listener* listener);

private:
    /// Does nothing if the loop runs. After a failure the next call tries again.
    bool startLoop();
    /// Releases the lock until the graph changes or the deadline has passed.
    void waitForChange(std::chrono::steady_clock::time_point deadline);
    void connect();
    void disconnect();
    void requestSync();
    void handleSync(int sequence);
    void handleError(std::uint32_t id, int result);

    static const pw_core_events CoreEvents;
    static const pw_core_events GraphCoreEvents;

    /// Held only while the loop starts; the loop's own thread never takes it.
    std::mutex m_startMutex;
    std::vector<Listener*> m_listeners;
    ThreadLoopPtr m_loop;
    ContextPtr m_context;
    CorePtr m_core;
    Hook m_coreHook;
    CorePtr m_graphCore;
    Hook m_graphCoreHook;
    std::unique_ptr<RegistryMirror> m_mirror;
    std::unique_ptr<LoopTimer> m_reconnect;
    std::optional<int> m_pendingSync;
    bool m_hasChangedSinceSync = false;
    bool m_isReady = false;
};

} // namespace quelto::pipewire
