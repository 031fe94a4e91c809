// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/picture/FrameConverter.h"
#include "platform/pipewire/video/DmaBufLoans.h"
#include "platform/pipewire/video/StreamPacer.h"

namespace quelto::pipewire {

/// Turns the buffers of a stream into frames of the output's size and rate. See StreamPacer for which of them.
///
/// Thread: the loop's lock held.
class FrameDelivery {
public:
    struct Events {
        std::function<void(VideoFramePtr)> onFrame;
        /// The encoder cannot read DMA-BUFs. One that is still held is dropped. May be called more than once.
        std::function<void()> onRejected;
    };

    /// Runs a function on the loop's thread. No exception may leave it.
    using Guard = std::function<void(const std::function<void()>&)>;

    /// Events are called on the loop's thread. The guard runs what the loop itself starts.
    FrameDelivery(pw_loop* loop, const Guard& guard, Events events);

    /// Until then only the newest buffer is held.
    void start(QSize outputSize, int framesPerSecond);
    /// Takes a buffer that has a picture.
    void add(StreamBuffer buffer, HostTime arrival);
    /// The stream has removed the buffer.
    void forget(const pw_buffer* buffer);

private:
    bool deliver(StreamBuffer& buffer, HostTime time);
    std::shared_ptr<VideoFrame> tryMakeFrame(StreamBuffer& buffer);
    void updateTimer();
    void reject();

    Events m_events;
    QSize m_outputSize;
    /// The presentation time of the last frame, or of the start.
    HostTime m_lastTime;
    std::optional<FramePool> m_pool;
    FrameConverter m_converter;
    DmaBufLoans m_loans;
    StreamPacer<StreamBuffer> m_pacer;
    LoopTimer m_slotTimer;
};

} // namespace quelto::pipewire
