// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/FrameDelivery.h"

#include "platform/pipewire/video/VideoBuffer.h"

namespace quelto::pipewire {

namespace {

constexpr int FramePoolSize = 8;
// The unit of the encoders.
constexpr HostDuration LeastInterval = std::chrono::microseconds(1);

} // namespace

FrameDelivery::FrameDelivery(pw_loop* loop, const Guard& guard, Events events)
    : m_events(std::move(events))
    , m_loans(loop, [this, guard] { guard([this] { reject(); }); })
    , m_pacer([this](StreamBuffer& buffer, HostTime time) { return deliver(buffer, time); })
    , m_slotTimer(loop, [this, guard] {
        guard([this] {
            m_pacer.advance(HostClock::now());
            updateTimer();
        });
    })
{
}

void FrameDelivery::start(QSize outputSize, int framesPerSecond)
{
    m_outputSize = outputSize;
    m_pool.reset();
    m_lastTime = HostClock::now();
    m_pacer.start(m_lastTime, framesPerSecond);
    // Not delivered from here: frames come on the loop's thread.
    updateTimer();
}

void FrameDelivery::add(StreamBuffer buffer, HostTime arrival)
{
    const HostTime time = presentationTimeOf(buffer.contents(), arrival);
    m_pacer.add(std::move(buffer), time);
    updateTimer();
}

void FrameDelivery::forget(const pw_buffer* buffer)
{
    m_loans.forget(buffer);
    if (StreamBuffer* held = m_pacer.held(); held && held->is(buffer)) {
        held->forget();
        m_pacer.drop();
        updateTimer();
    }
}

bool FrameDelivery::deliver(StreamBuffer& buffer, HostTime time)
{
    const auto frame = tryMakeFrame(buffer);
    if (!frame) {
        return false;
    }
    // The screen may have shown the first picture long before the start, and the recording begins with the start. A
    // source may also repeat a time; the encoder needs rising ones.
    m_lastTime = std::max(time, m_lastTime + LeastInterval);
    frame->presentationTime = m_lastTime;
    m_events.onFrame(frame);
    return true;
}

std::shared_ptr<VideoFrame> FrameDelivery::tryMakeFrame(StreamBuffer& buffer)
{
    if (buffer.format().dmaBuf) {
        auto frame = m_loans.tryLend(buffer);
        if (frame) {
            frame->size = m_outputSize;
        }
        return frame;
    }
    if (!m_pool) {
        m_pool.emplace(m_outputSize, FramePoolSize);
    }
    auto frame = m_pool->tryAcquire();
    if (frame) {
        m_converter.convert(*buffer.picture(), *frame);
    }
    return frame;
}

void FrameDelivery::updateTimer()
{
    if (const auto time = m_pacer.wakeTime()) {
        m_slotTimer.armAt(*time);
    } else if (m_slotTimer.isArmed()) {
        m_slotTimer.disarm();
    }
}

void FrameDelivery::reject()
{
    if (const StreamBuffer* held = m_pacer.held(); held && held->format().dmaBuf) {
        m_pacer.drop();
        updateTimer();
    }
    m_events.onRejected();
}

} // namespace quelto::pipewire
