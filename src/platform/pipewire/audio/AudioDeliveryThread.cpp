// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/AudioDeliveryThread.h"

#include "platform/pipewire/audio/AudioBufferAssembler.h"
#include "platform/pipewire/audio/CaptureSampleRate.h"

#include <QDebug>

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <system_error>

namespace quelto::pipewire {

namespace {

/// Units: bytes. Holds more than two seconds of stereo; no healthy reader pauses that long.
constexpr std::uint32_t RingCapacity = 1 << 20;
static_assert(RingCapacity > 2 * 2 * CaptureSampleRate * sizeof(float));
/// Units: frames. Avoids waking the thread for each short block.
constexpr int FramesPerWake = CaptureSampleRate / 100;
constexpr std::chrono::milliseconds PauseInterval(1000);
constexpr std::chrono::milliseconds Forever(-1);

} // namespace

AudioDeliveryThread::EventFd::EventFd()
    : m_descriptor(eventfd(0, EFD_CLOEXEC))
{
    if (m_descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

AudioDeliveryThread::EventFd::~EventFd()
{
    close(m_descriptor);
}

void AudioDeliveryThread::EventFd::notify() noexcept
{
    eventfd_write(m_descriptor, 1);
}

void AudioDeliveryThread::EventFd::wait(std::chrono::milliseconds timeout) noexcept
{
    pollfd event = {.fd = m_descriptor, .events = POLLIN, .revents = 0};
    if (poll(&event, 1, static_cast<int>(timeout.count())) > 0) {
        eventfd_t count = 0;
        eventfd_read(m_descriptor, &count);
    }
}

AudioDeliveryThread::AudioDeliveryThread(AudioSourceEvents events, bool fillsPauses)
    : m_events(std::move(events))
    , m_pauses(fillsPauses ? std::optional(PauseFiller(CaptureSampleRate)) : std::nullopt)
    , m_ring(RingCapacity)
    , m_thread(&AudioDeliveryThread::run, this)
{
    pthread_setname_np(m_thread.native_handle(), "quelto-samples");
}

AudioDeliveryThread::~AudioDeliveryThread()
{
    {
        const std::lock_guard guard(m_mutex);
        m_isStopping = true;
    }
    m_wakeUp.notify();
    m_thread.join();
}

void AudioDeliveryThread::write(const AudioRing::Block& block, const float* values) noexcept
{
    m_ring.tryWrite(block, values);
    m_framesSinceWake += block.frames;
    if (m_framesSinceWake >= FramesPerWake) {
        m_framesSinceWake = 0;
        m_wakeUp.notify();
    }
}

void AudioDeliveryThread::flush()
{
    {
        const std::lock_guard guard(m_mutex);
        m_isFlushing = true;
    }
    m_wakeUp.notify();
}

void AudioDeliveryThread::warn(std::optional<QString> warning)
{
    {
        const std::lock_guard guard(m_mutex);
        m_warnings.push_back(std::move(warning));
    }
    m_wakeUp.notify();
}

void AudioDeliveryThread::reportApplications(const QSet<QString>& applications)
{
    {
        const std::lock_guard guard(m_mutex);
        m_applications.push_back(applications);
    }
    m_wakeUp.notify();
}

void AudioDeliveryThread::deliver(AudioBufferPtr buffer)
{
    if (m_pauses) {
        m_pauses->follow(*buffer);
    }
    if (m_events.onBuffer) {
        m_events.onBuffer(std::move(buffer));
    }
}

void AudioDeliveryThread::deliver(std::optional<QString> warning)
{
    if (m_pauses && warning) {
        m_pauses->stop();
    } else if (m_pauses) {
        m_pauses->start(HostClock::now());
    }
    if (m_events.onWarning) {
        m_events.onWarning(std::move(warning));
    }
}

void AudioDeliveryThread::run()
{
    AudioBufferAssembler assembler(CaptureSampleRate, [this](AudioBufferPtr buffer) { deliver(std::move(buffer)); });
    std::vector<float> values;
    std::uint64_t reportedDrops = 0;
    while (true) {
        m_wakeUp.wait(m_pauses ? PauseInterval : Forever);
        std::deque<std::optional<QString>> warnings;
        std::deque<QSet<QString>> applications;
        bool isFlushing = false;
        {
            const std::lock_guard guard(m_mutex);
            if (m_isStopping) {
                return;
            }
            warnings.swap(m_warnings);
            applications.swap(m_applications);
            isFlushing = std::exchange(m_isFlushing, false);
        }
        while (const auto block = m_ring.tryRead(values)) {
            assembler.add(*block, values);
        }
        if (isFlushing) {
            assembler.flush();
        }
        for (std::optional<QString>& warning : warnings) {
            deliver(std::move(warning));
        }
        for (const QSet<QString>& ids : applications) {
            if (m_events.onApplications) {
                m_events.onApplications(ids);
            }
        }
        if (AudioBufferPtr silence = m_pauses ? m_pauses->tryFill(HostClock::now()) : nullptr) {
            deliver(std::move(silence));
        }
        if (const std::uint64_t drops = m_ring.droppedBlocks(); drops != reportedDrops) {
            qWarning("audio: %llu blocks dropped because their delivery was too slow",
                     static_cast<unsigned long long>(drops - reportedDrops));
            reportedDrops = drops;
        }
    }
}

} // namespace quelto::pipewire
