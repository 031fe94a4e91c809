// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <QSize>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace quelto {

/// One uncompressed video frame in NV12: 8-bit 4:2:0, video range, BT.709, a luma plane and an interleaved chroma
/// plane.
///
/// Not copyable: the planes belong to a FramePool, which may give them to the next frame when the last reference to
/// this one is released. A copy would not keep them.
///
/// Units: stride in bytes. Width and height are even.
struct VideoFrame {
    VideoFrame() = default;
    VideoFrame(const VideoFrame&) = delete;
    VideoFrame& operator=(const VideoFrame&) = delete;

    HostTime presentationTime;
    QSize size;
    int stride = 0;
    std::uint8_t* luma = nullptr;
    std::uint8_t* chroma = nullptr;
};

using VideoFramePtr = std::shared_ptr<const VideoFrame>;

/// A fixed number of frames that a screen grabber and an encoder reuse.
///
/// When the encoder falls behind, the pool is exhausted and the grabber skips a whole frame before doing any work for
/// it, so memory use is bounded. A frame returns to the pool when its last reference is released, even after the pool
/// has been destroyed.
///
/// Thread: any.
class FramePool {
public:
    FramePool(QSize size, int frameCount);

    /// A frame to fill, or null when all are in use.
    std::shared_ptr<VideoFrame> tryAcquire();

private:
    struct Store;
    std::shared_ptr<Store> m_store;
};

} // namespace quelto
