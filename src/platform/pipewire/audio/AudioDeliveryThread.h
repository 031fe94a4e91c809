// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"
#include "platform/pipewire/audio/AudioRing.h"

#include <deque>
#include <mutex>
#include <thread>

namespace quelto::pipewire {

/// Takes blocks from the real-time thread and hands them on as samples, on a thread of its own, with the warnings.
/// Destruction waits for a running event; none comes after it.
class AudioDeliveryThread {
public:
    explicit AudioDeliveryThread(AudioSourceEvents events);
    ~AudioDeliveryThread();
    AudioDeliveryThread(const AudioDeliveryThread&) = delete;
    AudioDeliveryThread& operator=(const AudioDeliveryThread&) = delete;

    /// Real-time thread: the block is copied; where the reader is too far behind, it is dropped and counted.
    void write(const AudioRing::Block& block, const float* values) noexcept;

    /// The stream pauses: what is left over need not wait for more. Any thread.
    void flush();
    /// Any thread.
    void warn(std::optional<QString> warning);

private:
    void run();

    class EventCounter {
    public:
        EventCounter();
        ~EventCounter();
        EventCounter(const EventCounter&) = delete;
        EventCounter& operator=(const EventCounter&) = delete;
        void raise() noexcept;
        void wait() noexcept;

    private:
        int m_descriptor;
    };

    AudioSourceEvents m_events;
    AudioRing m_ring;
    EventCounter m_counter;
    /// Real-time thread only.
    int m_framesSinceWake = 0;
    std::mutex m_mutex;
    std::deque<std::optional<QString>> m_warnings;
    bool m_isFlushing = false;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace quelto::pipewire
