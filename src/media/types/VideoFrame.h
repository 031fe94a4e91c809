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

/// One uncompressed picture: 8-bit 4:2:0, video range, BT.709, a luma plane and an interleaved chroma plane (NV12).
///
/// Units: strides in bytes. Both sides are even.
struct VideoFrame {
    HostTime presentationTime;
    QSize size;
    int stride = 0;
    std::uint8_t* luma = nullptr;
    std::uint8_t* chroma = nullptr;
};

using VideoFramePtr = std::shared_ptr<const VideoFrame>;

/// A fixed number of frames that go round between a grabber and an encoder.
///
/// When the encoder falls behind, the pool runs dry and the grabber skips a whole frame before any work was put into
/// it; memory never grows. A frame goes back by itself when its last owner lets go, also after the pool is gone.
///
/// Thread: any.
class FramePool {
public:
    FramePool(QSize size, int frameCount);

    /// A frame to be filled, or null when all are in use.
    std::shared_ptr<VideoFrame> tryTake();

private:
    struct Store;
    std::shared_ptr<Store> m_store;
};

} // namespace quelto
