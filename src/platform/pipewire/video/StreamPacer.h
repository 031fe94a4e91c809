// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/FramePacer.h"

#include <functional>
#include <optional>

namespace quelto::pipewire {

/// Thins a stream of frames to a frame rate.
///
/// Time is divided into slots, one for each frame of the rate. A slot takes one frame. A frame whose slot is taken is
/// held for the next one, and a newer frame of the same slot replaces it. So a source at about the same rate loses no
/// frame to jitter, and the last frame before the screen stops changing always arrives.
///
/// A slot begins when a frame of it arrives. That makes the choice independent of the delays of the frames, which would
/// otherwise space a faster source unevenly. If no such frame arrives, the clock decides a little later.
///
/// Before start() it only holds the newest frame.
///
/// Thread: one at a time. Does not read the clock.
template <typename Frame> class StreamPacer {
public:
    /// From the begin of a slot until the clock decides. Longer than the delays of a compositor that is not busy.
    static constexpr HostDuration Patience = std::chrono::milliseconds(50);

    /// Returns false to have the frame offered again in the next slot, for want of memory for instance.
    using Deliver = std::function<bool(Frame& frame, HostTime frameTime)>;

    explicit StreamPacer(Deliver deliver)
        : m_deliver(std::move(deliver))
    {
    }

    /// A frame that is held is due now.
    void start(HostTime now, int framesPerSecond)
    {
        m_slots.emplace(now, framesPerSecond);
        m_next = now;
        m_wake = now;
    }

    void add(Frame frame, HostTime frameTime)
    {
        const auto isSlotFree = [&] { return m_slots && frameTime >= m_next; };
        if (m_held && isSlotFree()) {
            deliverHeld(frameTime);
        }
        m_held.emplace(Held{.frame = std::move(frame), .time = frameTime});
        if (isSlotFree()) {
            deliverHeld(frameTime);
        }
    }

    /// Delivers the held frame if it is due.
    void advance(HostTime now)
    {
        if (const auto wake = wakeTime(); wake && now >= *wake) {
            deliverHeld(now);
        }
    }

    /// When to call advance(). Nothing while no frame is held.
    std::optional<HostTime> wakeTime() const noexcept
    {
        return m_slots && m_held ? std::optional(m_wake) : std::nullopt;
    }

    Frame* held() noexcept { return m_held ? &m_held->frame : nullptr; }
    void drop() noexcept { m_held.reset(); }

private:
    struct Held {
        Frame frame;
        HostTime time;
    };

    void deliverHeld(HostTime now)
    {
        if (m_deliver(m_held->frame, m_held->time)) {
            m_next = m_slots->slotAfter(std::max(m_held->time, m_next));
            m_wake = m_next + Patience;
            m_held.reset();
        } else {
            m_next = m_slots->slotAfter(now);
            m_wake = m_next;
        }
    }

    Deliver m_deliver;
    std::optional<FramePacer> m_slots;
    /// The begin of the first slot that is not taken.
    HostTime m_next;
    HostTime m_wake;
    std::optional<Held> m_held;
};

} // namespace quelto::pipewire
