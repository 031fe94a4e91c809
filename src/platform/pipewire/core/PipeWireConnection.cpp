// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/core/PipeWireConnection.h"

#include <cerrno>

namespace quelto::pipewire {

namespace {

constexpr int RetryMilliseconds = 250;

PipeWireConnection* connectionOf(void* data)
{
    return static_cast<PipeWireConnection*>(data);
}

} // namespace

const pw_core_events PipeWireConnection::CoreEvents = {
    .version = PW_VERSION_CORE_EVENTS,
    .error = [](void* data, std::uint32_t id, int, int result,
                const char*) { connectionOf(data)->handleError(id, result); },
};

const pw_core_events PipeWireConnection::GraphCoreEvents = {
    .version = PW_VERSION_CORE_EVENTS,
    .done = [](void* data, std::uint32_t, int sequence) { connectionOf(data)->handleSync(sequence); },
    .error = [](void* data, std::uint32_t id, int, int result,
                const char*) { connectionOf(data)->handleError(id, result); },
};

PipeWireConnection::Lock::Lock(PipeWireConnection& connection)
    : LoopLock(connection.m_loop.get())
{
}

PipeWireConnection::~PipeWireConnection()
{
    if (m_loop) {
        pw_thread_loop_stop(m_loop.get());
        m_reconnect.reset();
        disconnect();
        m_context.reset();
    }
}

bool PipeWireConnection::start()
{
    if (!startLoop()) {
        return false;
    }
    const Lock lock(*this);
    if (!m_core) {
        connect();
    }
    return true;
}

bool PipeWireConnection::startLoop()
{
    const std::lock_guard guard(m_startMutex);
    if (m_context) {
        return true;
    }
    initializeLibrary();
    m_loop.reset(pw_thread_loop_new("quelto-sound", nullptr));
    if (!m_loop) {
        return false;
    }
    m_context = makeContext(loop());
    if (!m_context || pw_thread_loop_start(m_loop.get()) != 0) {
        m_context.reset();
        m_loop.reset();
        return false;
    }
    const Lock lock(*this);
    m_reconnect = std::make_unique<LoopTimer>(loop(), [this] {
        disconnect();
        connect();
        if (!m_core && !m_listeners.empty()) {
            m_reconnect->arm(RetryMilliseconds);
        }
    });
    return true;
}

bool PipeWireConnection::waitUntilReady(std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    if (!start()) {
        return false;
    }
    const Lock lock(*this);
    while (m_core && !m_isReady && std::chrono::steady_clock::now() < deadline) {
        waitForChange(deadline);
    }
    return m_isReady;
}

void PipeWireConnection::waitForChange(std::chrono::steady_clock::time_point deadline)
{
    const auto left = deadline - std::chrono::steady_clock::now();
    timespec until = {};
    pw_thread_loop_get_time(m_loop.get(), &until, std::max<std::int64_t>(1, std::chrono::nanoseconds(left).count()));
    pw_thread_loop_timed_wait_full(m_loop.get(), &until);
}

void PipeWireConnection::addListener(Listener* listener)
{
    m_listeners.push_back(listener);
    if (!m_core && !m_reconnect->isArmed()) {
        m_reconnect->arm(RetryMilliseconds);
    }
}

void PipeWireConnection::removeListener(Listener* listener)
{
    std::erase(m_listeners, listener);
}

void PipeWireConnection::connect()
{
    m_core.reset(pw_context_connect(m_context.get(), nullptr, 0));
    m_graphCore.reset(m_core ? pw_context_connect(m_context.get(), nullptr, 0) : nullptr);
    if (!m_graphCore) {
        m_core.reset();
        return;
    }
    // A pending attempt would replace this connection, and with it destroy what listeners have created from its core.
    m_reconnect->disarm();
    listen(m_core.get(), m_coreHook, CoreEvents, this);
    listen(m_graphCore.get(), m_graphCoreHook, GraphCoreEvents, this);
    m_mirror = std::make_unique<RegistryMirror>(loop(), m_graphCore.get(), [this] {
        m_hasChangedSinceSync = true;
        requestSync();
    });
    requestSync();
}

void PipeWireConnection::disconnect()
{
    m_isReady = false;
    m_pendingSync.reset();
    m_mirror.reset();
    m_graphCoreHook.remove();
    m_graphCore.reset();
    m_coreHook.remove();
    m_core.reset();
}

/// Changes arrive in bursts, and a device arrives in parts. A sync round trip tells that the server has sent
/// everything; only then are listeners called.
void PipeWireConnection::requestSync()
{
    if (!m_pendingSync) {
        m_hasChangedSinceSync = false;
        m_pendingSync = sync(m_graphCore.get());
    }
}

void PipeWireConnection::handleSync(int sequence)
{
    if (m_pendingSync != sequence) {
        return;
    }
    m_pendingSync.reset();
    if (m_hasChangedSinceSync) {
        requestSync();
        return;
    }
    m_isReady = true;
    pw_thread_loop_signal(m_loop.get(), false);
    for (Listener* listener : m_listeners) {
        listener->onGraphChanged();
    }
}

void PipeWireConnection::handleError(std::uint32_t id, int result)
{
    const bool isLost = result == -EPIPE || result == -ECONNRESET;
    if (id != PW_ID_CORE || !isLost) {
        return;
    }
    m_isReady = false;
    for (Listener* listener : m_listeners) {
        listener->onServerLost();
    }
    pw_thread_loop_signal(m_loop.get(), false);
    // Not at once: the core must not be destroyed inside its own event.
    m_reconnect->arm(0);
}

} // namespace quelto::pipewire
