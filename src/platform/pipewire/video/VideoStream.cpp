// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/VideoStream.h"

#include "platform/pipewire/video/FrameDelivery.h"
#include "platform/pipewire/video/VideoBuffer.h"

#include <cerrno>
#include <stdexcept>

namespace quelto::pipewire {

namespace {

// A change of the format pauses the stream for a tenth of a millisecond, on a busy machine longer.
constexpr int PauseMilliseconds = 250;

pw_properties* videoStreamProperties()
{
    return pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture", PW_KEY_MEDIA_ROLE, "Screen",
                             PW_KEY_NODE_NAME, "quelto-screen", PW_KEY_APP_NAME, "Quelto", PW_KEY_APP_ID,
                             "app.quelto.Quelto",
                             // Never another source, such as a camera, in place of the screen.
                             PW_KEY_NODE_DONT_RECONNECT, "true", "node.dont-fallback", "true", "state.restore-target",
                             "false", "state.restore-props", "false", nullptr);
}

} // namespace

/// What the loop's thread uses. Members are destroyed in the reverse order, after the thread has ended.
class VideoStream::Connection {
public:
    Connection(FileDescriptor remote, std::uint32_t nodeId, const VideoStreamOptions& options,
               VideoStreamEvents events);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void start(QSize outputSize, int framesPerSecond);

private:
    bool open(FileDescriptor remote, std::uint32_t nodeId);
    void handleState(pw_stream_state before, pw_stream_state state);
    void handleFormat(const spa_pod* object);
    void process();
    void withdrawDmaBufs();
    bool isOffered(const VideoFormat& format) const;
    void end(StreamEnd reason);
    /// Runs a part of a callback of the library, which no exception may leave. Does nothing after the end.
    void guarded(const std::function<void()>& function) noexcept;
    static void guarded(void* connection, const std::function<void(Connection&)>& function) noexcept;

    static const pw_core_events CoreEvents;
    static const pw_stream_events StreamEvents;

    VideoStreamEvents m_events;
    int m_maxFramesPerSecond;
    DmaBufOffers m_dmaBufOffers;
    bool m_hasEnded = false;
    std::optional<VideoFormat> m_format;
    QSize m_reportedSize;
    /// The formats of the stream's buffers: those of the format before may still be queued after a change.
    std::map<pw_buffer*, VideoFormat> m_bufferFormats;
    ThreadLoopPtr m_thread;
    ContextPtr m_context;
    CorePtr m_core;
    Hook m_coreHook;
    StreamPtr m_stream;
    std::optional<LoopTimer> m_pauseTimer;
    std::optional<FrameDelivery> m_delivery;
    Hook m_streamHook;
};

const pw_core_events VideoStream::Connection::CoreEvents = {
    .version = PW_VERSION_CORE_EVENTS,
    .error =
        [](void* data, std::uint32_t id, int, int result, const char*) {
            if (id == PW_ID_CORE && (result == -EPIPE || result == -ECONNRESET)) {
                guarded(data, [](Connection& connection) { connection.end(StreamEnd::serverLost); });
            }
        },
};

const pw_stream_events VideoStream::Connection::StreamEvents = {
    .version = PW_VERSION_STREAM_EVENTS,
    .state_changed =
        [](void* data, pw_stream_state before, pw_stream_state state, const char* error) {
            if (error) {
                qWarning("video stream: %s", error);
            }
            guarded(data, [&](Connection& connection) { connection.handleState(before, state); });
        },
    .param_changed =
        [](void* data, std::uint32_t id, const spa_pod* object) {
            if (id == SPA_PARAM_Format) {
                guarded(data, [&](Connection& connection) { connection.handleFormat(object); });
            }
        },
    .add_buffer =
        [](void* data, pw_buffer* buffer) {
            guarded(data, [&](Connection& connection) {
                if (connection.m_format) {
                    connection.m_bufferFormats[buffer] = *connection.m_format;
                }
            });
        },
    .remove_buffer =
        [](void* data, pw_buffer* buffer) {
            // Also after the end: what still holds the buffer must not give it back.
            auto* connection = static_cast<Connection*>(data);
            connection->m_bufferFormats.erase(buffer);
            connection->m_delivery->forget(buffer);
        },
    .process = [](void* data) { guarded(data, [](Connection& connection) { connection.process(); }); },
};

VideoStream::Connection::Connection(FileDescriptor remote, std::uint32_t nodeId, const VideoStreamOptions& options,
                                    VideoStreamEvents events)
    : m_events(std::move(events))
    , m_maxFramesPerSecond(options.maxFramesPerSecond)
    , m_dmaBufOffers(options.dmaBufFormats)
{
    initializeLibrary();
    m_thread.reset(pw_thread_loop_new("quelto.stream", nullptr));
    if (!m_thread || !open(std::move(remote), nodeId) || pw_thread_loop_start(m_thread.get()) != 0) {
        throw std::runtime_error("cannot connect to PipeWire");
    }
}

VideoStream::Connection::~Connection()
{
    {
        const LoopLock lock(m_thread.get());
        m_hasEnded = true;
        // First, because the library calls process() on its data thread if the loop's thread has ended.
        pw_stream_disconnect(m_stream.get());
    }
    pw_thread_loop_stop(m_thread.get());
}

bool VideoStream::Connection::open(FileDescriptor remote, std::uint32_t nodeId)
{
    pw_loop* loop = pw_thread_loop_get_loop(m_thread.get());
    m_context = makeContext(loop);
    if (!m_context) {
        return false;
    }
    m_core.reset(remote.get() < 0 ? pw_context_connect(m_context.get(), nullptr, 0)
                                  : pw_context_connect_fd(m_context.get(), remote.release(), nullptr, 0));
    if (!m_core) {
        return false;
    }
    listen(m_core.get(), m_coreHook, CoreEvents, this);
    m_stream.reset(pw_stream_new(m_core.get(), "screen", videoStreamProperties()));
    if (!m_stream) {
        return false;
    }
    m_pauseTimer.emplace(loop, [this] { guarded([this] { end(StreamEnd::sourceStopped); }); });
    m_delivery.emplace(
        loop, [this](const std::function<void()>& function) { guarded(function); },
        FrameDelivery::Events{.onFrame = m_events.onFrame, .onRejected = [this] { withdrawDmaBufs(); }});
    pw_stream_add_listener(m_stream.get(), m_streamHook.get(), &StreamEvents, this);
    SpaObjects offers;
    addFormatOffers(offers, m_dmaBufOffers.formats(), m_maxFramesPerSecond);
    const auto flags = static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS |
                                                    PW_STREAM_FLAG_DONT_RECONNECT);
    return pw_stream_connect(m_stream.get(), PW_DIRECTION_INPUT, nodeId, flags, offers.all().data(),
                             static_cast<std::uint32_t>(offers.all().size())) >= 0;
}

void VideoStream::Connection::start(QSize outputSize, int framesPerSecond)
{
    const LoopLock lock(m_thread.get());
    m_delivery->start(outputSize, framesPerSecond);
}

void VideoStream::Connection::handleState(pw_stream_state before, pw_stream_state state)
{
    switch (state) {
    case PW_STREAM_STATE_ERROR:
        end(StreamEnd::failed);
        return;
    case PW_STREAM_STATE_UNCONNECTED:
        end(StreamEnd::sourceStopped);
        return;
    case PW_STREAM_STATE_PAUSED:
        // A stream is also paused before it begins. Some versions of the library report nothing else when a source
        // ends.
        if (before == PW_STREAM_STATE_STREAMING) {
            m_pauseTimer->arm(PauseMilliseconds);
        }
        return;
    case PW_STREAM_STATE_CONNECTING:
        return;
    case PW_STREAM_STATE_STREAMING:
        m_pauseTimer->disarm();
        return;
    }
}

void VideoStream::Connection::handleFormat(const spa_pod* object)
{
    const auto format = parseVideoFormat(object);
    if (!format) {
        return;
    }
    m_format = format;
    SpaObjects requests;
    addBufferRequests(requests, *format);
    pw_stream_update_params(m_stream.get(), requests.all().data(), static_cast<std::uint32_t>(requests.all().size()));
    if (m_reportedSize != format->size) {
        m_reportedSize = format->size;
        m_events.onFormat(format->size);
    }
}

void VideoStream::Connection::process()
{
    const HostTime arrival = HostClock::now();
    while (pw_buffer* taken = pw_stream_dequeue_buffer(m_stream.get())) {
        const auto format = m_bufferFormats.find(taken);
        if (format == m_bufferFormats.end()) {
            pw_stream_queue_buffer(m_stream.get(), taken);
            continue;
        }
        StreamBuffer buffer(m_stream.get(), taken, format->second);
        if (isOffered(buffer.format()) && buffer.picture()) {
            m_delivery->add(std::move(buffer), arrival);
        }
    }
}

void VideoStream::Connection::withdrawDmaBufs()
{
    if (!m_dmaBufOffers.withdraw()) {
        return;
    }
    SpaObjects offers;
    addFormatOffers(offers, m_dmaBufOffers.formats(), m_maxFramesPerSecond);
    pw_stream_update_params(m_stream.get(), offers.all().data(), static_cast<std::uint32_t>(offers.all().size()));
}

bool VideoStream::Connection::isOffered(const VideoFormat& format) const
{
    return !format.dmaBuf || m_dmaBufOffers.contains(format.dmaBuf->format, format.dmaBuf->modifier);
}

void VideoStream::Connection::end(StreamEnd reason)
{
    m_hasEnded = true;
    m_events.onEnded(reason);
}

void VideoStream::Connection::guarded(const std::function<void()>& function) noexcept
{
    if (m_hasEnded) {
        return;
    }
    try {
        function();
    } catch (const std::exception& error) {
        qWarning("video stream: %s", error.what());
        end(StreamEnd::failed);
    }
}

void VideoStream::Connection::guarded(void* connection, const std::function<void(Connection&)>& function) noexcept
{
    auto* self = static_cast<Connection*>(connection);
    self->guarded([&] { function(*self); });
}

VideoStream::VideoStream(FileDescriptor remote, std::uint32_t nodeId, const VideoStreamOptions& options,
                         VideoStreamEvents events)
    : m_connection(std::make_unique<Connection>(std::move(remote), nodeId, options, std::move(events)))
{
}

VideoStream::~VideoStream() = default;

void VideoStream::start(QSize outputSize, int framesPerSecond)
{
    m_connection->start(outputSize, framesPerSecond);
}

} // namespace quelto::pipewire
