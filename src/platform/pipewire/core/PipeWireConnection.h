// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/RegistryMirror.h"

#include <chrono>

namespace quelto::pipewire {

/// The program's one line to the sound server: its thread, the picture of the graph, and the way back after a loss.
///
/// While somebody listens, a lost server is sought anew four times a second.
///
/// Thread: everything but the constructor, waitUntilReady and Lock needs the lock; listeners are called with it held,
/// on the loop's thread. The real-time thread runs beside it and is not kept waiting by the lock.
class PipeWireConnection {
public:
    class Listener {
    public:
        virtual ~Listener() = default;
        /// The graph is whole and differs from the last time, or the server is back.
        virtual void onGraphChanged() = 0;
        /// Whatever was made of the core must be destroyed now.
        virtual void onServerLost() = 0;
    };

    class Lock {
    public:
        explicit Lock(PipeWireConnection& connection);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        pw_thread_loop* m_loop;
    };

    /// Does not go to the server yet.
    PipeWireConnection() = default;
    ~PipeWireConnection();
    PipeWireConnection(const PipeWireConnection&) = delete;
    PipeWireConnection& operator=(const PipeWireConnection&) = delete;

    /// Whether there is a server and it has described itself; at once false where none answers. Any thread but the
    /// loop's, without the lock.
    bool waitUntilReady(std::chrono::milliseconds longest);
    /// Gives the lock up until the graph changes, or that time is over.
    void waitForChange(std::chrono::steady_clock::time_point deadline);

    bool isReady() const noexcept { return m_isReady; }
    const Graph& graph() const noexcept { return m_mirror->graph(); }
    pw_registry* registry() const noexcept { return m_mirror->registry(); }
    pw_core* core() const noexcept { return m_core.get(); }
    pw_loop* loop() const noexcept { return pw_thread_loop_get_loop(m_loop.get()); }

    void addListener(Listener* listener);
    void removeListener(Listener* listener);

private:
    bool startLoop();
    void connect();
    void disconnect();
    void askForSync();
    void handleSync(int sequence);
    void handleError(std::uint32_t id, int result);

    static const pw_core_events CoreEvents;

    std::vector<Listener*> m_listeners;
    ThreadLoopPtr m_loop;
    ContextPtr m_context;
    CorePtr m_core;
    Hook m_coreHook;
    std::unique_ptr<RegistryMirror> m_mirror;
    std::unique_ptr<LoopTimer> m_reconnect;
    std::optional<int> m_pendingSync;
    bool m_isChangedSinceSync = false;
    bool m_isReady = false;
};

} // namespace quelto::pipewire
