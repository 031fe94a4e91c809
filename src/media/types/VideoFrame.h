// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <QSize>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace quelto {

/// A picture in memory of the GPU, which this process does not read.
///
/// Not copyable: the descriptors belong to the source.
struct DmaBufImage {
    /// Units: bytes.
    struct Plane {
        int descriptor = -1;
        std::uint32_t offset = 0;
        std::uint32_t stride = 0;
    };

    DmaBufImage() = default;
    DmaBufImage(const DmaBufImage&) = delete;
    DmaBufImage& operator=(const DmaBufImage&) = delete;

    QSize size;
    /// The layout of the pixels, as DRM_FORMAT_ and DRM_FORMAT_MOD_ values of drm_fourcc.h.
    std::uint32_t format = 0;
    std::uint64_t modifier = 0;
    std::vector<Plane> planes;
    /// Tells the source that the encoder cannot read the picture. The source then delivers pictures in memory. May be
    /// called from any thread, more than once.
    std::function<void()> reject;
};

/// One uncompressed video frame in NV12: 8-bit 4:2:0, video range, BT.709, a luma plane and an interleaved chroma
/// plane. A source that captures on the GPU may deliver a DMA-BUF in place of the planes, in RGB and of any size; the
/// encoder converts and scales it.
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
    /// Then the planes are null. Lives as long as the frame.
    const DmaBufImage* dmaBuf = nullptr;
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
