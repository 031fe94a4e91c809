// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"
#include "platform/pipewire/audio/AudioRing.h"
#include "platform/pipewire/audio/PauseFiller.h"

#include <deque>
#include <mutex>
#include <thread>

namespace quelto::pipewire {

/// Takes blocks from the real-time thread and delivers them as audio buffers on its own thread, which also delivers the
/// warnings and the applications. The destructor waits for a running callback; none is called after it.
class AudioDeliveryThread {
public:
    /// fillsPauses: delivers silence when no blocks arrive while there is no warning.
    AudioDeliveryThread(AudioSourceEvents events, bool fillsPauses);
    ~AudioDeliveryThread();
    AudioDeliveryThread(const AudioDeliveryThread&) = delete;
    AudioDeliveryThread& operator=(const AudioDeliveryThread&) = delete;

    /// Copies the block. If the delivery is too far behind, drops and counts it.
    ///
    /// Thread: the real-time thread.
    void write(const AudioRing::Block& block, const float* values) noexcept;

    /// The stream pauses: delivers what is left instead of waiting for more. Any thread.
    void flush();
    /// Any thread.
    void warn(std::optional<QString> warning);
    /// Any thread.
    void reportApplications(const QSet<QString>& applications);

private:
    void run();

    /// Wakes the thread. notify() is safe on the real-time thread.
    class EventFd {
    public:
        EventFd();
        ~EventFd();
        EventFd(const EventFd&) = delete;
        EventFd& operator=(const EventFd&) = delete;
        void notify() noexcept;
        void wait(std::chrono::milliseconds timeout) noexcept;

    private:
        int m_descriptor;
    };

    void deliver(AudioBufferPtr buffer);
    void deliver(std::optional<QString> warning);

    AudioSourceEvents m_events;
    /// Nothing if pauses are not filled. Delivery thread only.
    std::optional<PauseFiller> m_pauses;
    AudioRing m_ring;
    EventFd m_wakeUp;
    /// Real-time thread only.
    int m_framesSinceWake = 0;
    std::mutex m_mutex;
    std::deque<std::optional<QString>> m_warnings;
    std::deque<QSet<QString>> m_applications;
    bool m_isFlushing = false;
    bool m_isStopping = false;
    std::thread m_thread;
};

} // namespace quelto::pipewire
