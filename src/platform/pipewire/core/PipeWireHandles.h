// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <pipewire/extensions/metadata.h>
#include <pipewire/pipewire.h>

#include <cstring>
#include <functional>
#include <memory>
#include <optional>

/// RAII handles for PipeWire objects, and all code that depends on the version of the library.
namespace quelto::pipewire {

struct ThreadLoopDeleter {
    void operator()(pw_thread_loop* loop) const noexcept { pw_thread_loop_destroy(loop); }
};
struct ContextDeleter {
    void operator()(pw_context* context) const noexcept { pw_context_destroy(context); }
};
struct CoreDeleter {
    void operator()(pw_core* core) const noexcept { pw_core_disconnect(core); }
};
struct StreamDeleter {
    void operator()(pw_stream* stream) const noexcept { pw_stream_destroy(stream); }
};
struct ProxyDeleter {
    template <typename Object> void operator()(Object* object) const noexcept
    {
        pw_proxy_destroy(reinterpret_cast<pw_proxy*>(object));
    }
};

using ThreadLoopPtr = std::unique_ptr<pw_thread_loop, ThreadLoopDeleter>;
using ContextPtr = std::unique_ptr<pw_context, ContextDeleter>;
using CorePtr = std::unique_ptr<pw_core, CoreDeleter>;
using StreamPtr = std::unique_ptr<pw_stream, StreamDeleter>;
using ProxyPtr = std::unique_ptr<pw_proxy, ProxyDeleter>;
using RegistryPtr = std::unique_ptr<pw_registry, ProxyDeleter>;

/// Before any other function of the library.
inline void initializeLibrary()
{
    static const bool isInitialized = (pw_init(nullptr, nullptr), true);
    static_cast<void>(isInitialized);
}

/// Holds the lock of an event loop's thread.
class LoopLock {
public:
    explicit LoopLock(pw_thread_loop* loop)
        : m_loop(loop)
    {
        pw_thread_loop_lock(m_loop);
    }
    ~LoopLock() { pw_thread_loop_unlock(m_loop); }
    LoopLock(const LoopLock&) = delete;
    LoopLock& operator=(const LoopLock&) = delete;

private:
    pw_thread_loop* m_loop;
};

/// Unregisters a listener when it is destroyed. Declare it after the object that it listens to.
class Hook {
public:
    Hook() = default;
    ~Hook() { remove(); }
    Hook(const Hook&) = delete;
    Hook& operator=(const Hook&) = delete;

    spa_hook* get() noexcept { return &m_hook; }
    void remove() noexcept
    {
        if (m_hook.link.next) {
            spa_hook_remove(&m_hook);
        }
        std::memset(&m_hook, 0, sizeof m_hook);
    }

private:
    spa_hook m_hook = {};
};

/// Calls a function on the loop's thread after a delay.
///
/// Thread: the loop's lock held.
class LoopTimer {
public:
    LoopTimer(pw_loop* loop, std::function<void()> onTimeout)
        : m_loop(loop)
        , m_onTimeout(std::move(onTimeout))
        , m_source(pw_loop_add_timer(loop, &LoopTimer::fire, this))
    {
    }
    ~LoopTimer() { pw_loop_destroy_source(m_loop, m_source); }
    LoopTimer(const LoopTimer&) = delete;
    LoopTimer& operator=(const LoopTimer&) = delete;

    bool isArmed() const noexcept { return m_isArmed; }
    void arm(int milliseconds)
    {
        m_isArmed = true;
        timespec value = {milliseconds / 1000, (milliseconds % 1000) * 1'000'000L};
        if (milliseconds == 0) {
            value.tv_nsec = 1;
        }
        pw_loop_update_timer(m_loop, m_source, &value, nullptr, false);
    }
    void armAt(HostTime time)
    {
        m_isArmed = true;
        // A value of 0 would disarm it.
        const auto since = std::max<std::int64_t>(1, time.time_since_epoch().count());
        timespec value = {since / 1'000'000'000, since % 1'000'000'000};
        pw_loop_update_timer(m_loop, m_source, &value, nullptr, true);
    }
    void disarm()
    {
        m_isArmed = false;
        pw_loop_update_timer(m_loop, m_source, nullptr, nullptr, false);
    }

private:
    static void fire(void* data, std::uint64_t)
    {
        auto* timer = static_cast<LoopTimer*>(data);
        timer->m_isArmed = false;
        timer->m_onTimeout();
    }

    pw_loop* m_loop;
    std::function<void()> m_onTimeout;
    spa_source* m_source;
    bool m_isArmed = false;
};

/// Calls a function on the loop's thread soon after signal().
///
/// Thread: the loop's lock held, except signal(): any.
class LoopEvent {
public:
    LoopEvent(pw_loop* loop, std::function<void()> onSignal)
        : m_loop(loop)
        , m_onSignal(std::move(onSignal))
        , m_source(pw_loop_add_event(loop, &LoopEvent::fire, this))
    {
    }
    ~LoopEvent() { pw_loop_destroy_source(m_loop, m_source); }
    LoopEvent(const LoopEvent&) = delete;
    LoopEvent& operator=(const LoopEvent&) = delete;

    void signal() { pw_loop_signal_event(m_loop, m_source); }

private:
    static void fire(void* data, std::uint64_t) { static_cast<LoopEvent*>(data)->m_onSignal(); }

    pw_loop* m_loop;
    std::function<void()> m_onSignal;
    spa_source* m_source;
};

/// The text of a property. Empty if it is missing.
inline QString property(const spa_dict* properties, const char* key)
{
    const char* value = properties ? spa_dict_lookup(properties, key) : nullptr;
    return QString::fromUtf8(value ? value : "");
}

/// The number of a property. Nothing if it is missing.
inline std::optional<std::uint32_t> numberProperty(const spa_dict* properties, const char* key)
{
    bool isNumber = false;
    const std::uint32_t number = property(properties, key).toUInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Before 1.2 only client-rt.conf gives the data thread real-time priority. Later versions do so by default and may no
/// longer ship that file.
inline ContextPtr makeContext(pw_loop* loop)
{
#if PW_CHECK_VERSION(1, 2, 0)
    return ContextPtr(pw_context_new(loop, nullptr, 0));
#else
    return ContextPtr(pw_context_new(loop, pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0));
#endif
}

// Up to 1.0 these functions are macros that contain C casts.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"

inline void listen(pw_core* core, Hook& hook, const pw_core_events& events, void* data)
{
    pw_core_add_listener(core, hook.get(), &events, data);
}
inline void listen(pw_registry* registry, Hook& hook, const pw_registry_events& events, void* data)
{
    pw_registry_add_listener(registry, hook.get(), &events, data);
}
inline void listen(pw_client* client, Hook& hook, const pw_client_events& events, void* data)
{
    pw_client_add_listener(client, hook.get(), &events, data);
}
inline void listen(pw_metadata* metadata, Hook& hook, const pw_metadata_events& events, void* data)
{
    pw_metadata_add_listener(metadata, hook.get(), &events, data);
}
inline void listen(pw_port* port, Hook& hook, const pw_port_events& events, void* data)
{
    pw_port_add_listener(port, hook.get(), &events, data);
}

inline int sync(pw_core* core)
{
    return pw_core_sync(core, PW_ID_CORE, 0);
}

inline void subscribe(pw_port* port, std::uint32_t parameter)
{
    pw_port_subscribe_params(port, &parameter, 1);
}

inline ProxyPtr bind(pw_registry* registry, std::uint32_t id, const char* type, std::uint32_t version)
{
    return ProxyPtr(static_cast<pw_proxy*>(pw_registry_bind(registry, id, type, version, 0)));
}

/// The object that a proxy stands for.
template <typename Object> Object* objectOf(const ProxyPtr& proxy)
{
    return reinterpret_cast<Object*>(proxy.get());
}

#pragma GCC diagnostic pop

} // namespace quelto::pipewire
