// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"
#include "media/types/VideoFrame.h"
#include "platform/pipewire/video/DmaBufOffers.h"

#include <functional>

namespace quelto::pipewire {

struct VideoStreamOptions {
    /// The rate to ask the source for, which is not the rate of the frames. The source lowers it to that of the screen.
    int maxFramesPerSecond = 1000;
    /// The DMA-BUFs to take in place of shared memory if the source has them; see queryDmaBufFormats().
    std::vector<DmaBufFormat> dmaBufFormats;
};

enum class StreamEnd {
    /// The source no longer delivers: its screen has gone or changed, or the user has stopped it.
    sourceStopped,
    /// The source or this stream has failed.
    failed,
    /// The connection to PipeWire has ended.
    serverLost,
};

/// Must return quickly, must not throw and must not call the stream.
///
/// Thread: the stream's own. The first events may come before the constructor has returned.
struct VideoStreamEvents {
    /// The size of the source's pictures in pixels, when it is first known and when it changes.
    std::function<void(QSize)> onFormat;
    /// Either with planes of the output size, or with a DMA-BUF. Presentation times rise.
    std::function<void(VideoFramePtr)> onFrame;
    /// No event follows.
    std::function<void(StreamEnd)> onEnded;
};

/// Receives the pictures of one node of PipeWire's graph, such as the compositor offers for a screen. It has a thread
/// and a connection of its own. A new size or pixel format of the source does not end it: frames keep the output size.
///
/// Thread: one at a time, but not its own.
class VideoStream {
public:
    /// remote: a connection to PipeWire that may see the node, or none to open one. Takes it in any case.
    ///
    /// Errors: std::runtime_error, if PipeWire cannot be reached.
    VideoStream(FileDescriptor remote, std::uint32_t nodeId, const VideoStreamOptions& options,
                VideoStreamEvents events);
    /// Ends the connection. No event is delivered after it returns.
    ~VideoStream();
    VideoStream(const VideoStream&) = delete;
    VideoStream& operator=(const VideoStream&) = delete;

    /// From now on frames are delivered, at most at this rate. The first is the newest picture that has arrived so far.
    /// Both sides of the size are even.
    void start(QSize outputSize, int framesPerSecond);

private:
    class Connection;
    std::unique_ptr<Connection> m_connection;
};

} // namespace quelto::pipewire
