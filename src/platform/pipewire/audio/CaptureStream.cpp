// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/CaptureStream.h"

#include "platform/pipewire/audio/CaptureSampleRate.h"

#include <spa/param/audio/format-utils.h>

namespace quelto::pipewire {

namespace {

constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;
constexpr HostDuration MaxLatency = std::chrono::seconds(2);
constexpr std::size_t MaxBuffers = 16;

pw_properties* streamProperties(const QString& nodeName)
{
    const QByteArray name = nodeName.toUtf8();
    return pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY, "Capture", PW_KEY_MEDIA_ROLE,
                             "Production", PW_KEY_NODE_NAME, name.constData(), PW_KEY_APP_NAME, "Quelto", PW_KEY_APP_ID,
                             "app.quelto.Quelto",
                             // Quelto creates the links. The session manager must neither create nor restore any.
                             PW_KEY_NODE_AUTOCONNECT, "false", PW_KEY_NODE_DONT_RECONNECT, "true",
                             "state.restore-target", "false", "state.restore-props", "false",
                             // While unlinked, the node is idle instead of being driven by an unrelated clock.
                             PW_KEY_NODE_WANT_DRIVER, "false", nullptr);
}

std::span<const float> valuesIn(const pw_buffer& buffer, int channels)
{
    const spa_data& data = buffer.buffer->datas[0];
    if (buffer.buffer->n_datas == 0 || !data.data || !data.chunk || (data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED)) {
        return {};
    }
    const std::uint32_t begin = std::min(data.chunk->offset, data.maxsize);
    const std::uint32_t bytes = std::min(data.chunk->size, data.maxsize - begin);
    const std::size_t frames = bytes / sizeof(float) / static_cast<std::size_t>(channels);
    return {reinterpret_cast<const float*>(static_cast<const std::byte*>(data.data) + begin),
            frames * static_cast<std::size_t>(channels)};
}

HostDuration durationOf(std::int64_t frames)
{
    return HostDuration(frames * NanosecondsPerSecond / CaptureSampleRate);
}

} // namespace

const pw_stream_events CaptureStream::StreamEvents = {
    .version = PW_VERSION_STREAM_EVENTS,
    .state_changed = [](void* data, pw_stream_state, pw_stream_state state,
                        const char*) { static_cast<CaptureStream*>(data)->handleState(state); },
    .io_changed =
        [](void* data, std::uint32_t id, void* area, std::uint32_t) {
            if (id == SPA_IO_Position) {
                static_cast<CaptureStream*>(data)->m_position = static_cast<const spa_io_position*>(area);
            }
        },
    .process = [](void* data) { static_cast<CaptureStream*>(data)->process(); },
};

CaptureStream::CaptureStream(pw_core* core, const Settings& settings, AudioDeliveryThread& delivery,
                             const OutputLatency& outputLatency, std::function<void()> onStateChanged)
    : m_settings(settings)
    , m_delivery(delivery)
    , m_outputLatency(outputLatency)
    , m_onStateChanged(std::move(onStateChanged))
    , m_stream(pw_stream_new(core, settings.nodeName.toUtf8().constData(), streamProperties(settings.nodeName)))
{
    if (!m_stream) {
        m_state = State::broken;
        return;
    }
    pw_stream_add_listener(m_stream.get(), m_hook.get(), &StreamEvents, this);
    spa_audio_info_raw format = {};
    format.format = SPA_AUDIO_FORMAT_F32;
    format.rate = CaptureSampleRate;
    format.channels = static_cast<std::uint32_t>(settings.channels);
    format.position[0] = settings.channels == 1 ? SPA_AUDIO_CHANNEL_MONO : SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;
    std::array<std::byte, 1024> memory;
    spa_pod_builder builder = {};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    std::array<const spa_pod*, 1> parameters = {spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format)};
    const auto flags = static_cast<pw_stream_flags>(PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
    if (pw_stream_connect(m_stream.get(), PW_DIRECTION_INPUT, PW_ID_ANY, flags, parameters.data(), 1) < 0) {
        m_state = State::broken;
    }
}

ObjectId CaptureStream::node() const
{
    return pw_stream_get_node_id(m_stream.get());
}

void CaptureStream::handleState(pw_stream_state state)
{
    switch (state) {
    case PW_STREAM_STATE_CONNECTING:
        return;
    case PW_STREAM_STATE_ERROR:
    case PW_STREAM_STATE_UNCONNECTED:
        m_state = State::broken;
        break;
    case PW_STREAM_STATE_PAUSED:
        m_delivery.flush();
        m_state = State::ready;
        break;
    case PW_STREAM_STATE_STREAMING:
        m_state = State::ready;
        break;
    }
    m_onStateChanged();
}

void CaptureStream::process() noexcept
{
    std::array<pw_buffer*, MaxBuffers> buffers;
    std::size_t count = 0;
    std::int64_t framesBehind = 0;
    while (count < buffers.size()) {
        pw_buffer* buffer = pw_stream_dequeue_buffer(m_stream.get());
        if (!buffer) {
            break;
        }
        buffers[count++] = buffer;
        framesBehind += static_cast<std::int64_t>(valuesIn(*buffer, m_settings.channels).size()) / m_settings.channels;
    }
    const HostTime newestTime = cycleTimestamp();
    for (std::size_t i = 0; i < count; ++i) {
        const std::span<const float> values = valuesIn(*buffers[i], m_settings.channels);
        const auto frames = static_cast<int>(values.size()) / m_settings.channels;
        // All but the last buffer belong to earlier cycles.
        framesBehind -= frames;
        if (frames > 0) {
            m_delivery.write(
                {.time = newestTime - durationOf(framesBehind), .frames = frames, .channels = m_settings.channels},
                values.data());
        }
        pw_stream_queue_buffer(m_stream.get(), buffers[i]);
    }
}

HostTime CaptureStream::cycleTimestamp() const noexcept
{
    const HostTime arrival = HostClock::now();
    pw_time time = {};
    if (pw_stream_get_time_n(m_stream.get(), &time, sizeof time) < 0 || time.now <= 0 || time.rate.denom == 0) {
        return arrival;
    }
    const std::int64_t tick = NanosecondsPerSecond * time.rate.num;
    HostTime timestamp = HostTime(HostDuration(time.now)) - durationOf(static_cast<std::int64_t>(time.buffered));
    if (m_settings.timestamps == TimestampReference::capture) {
        timestamp -= HostDuration(time.delay * tick / time.rate.denom);
    } else if (const spa_io_position* position = m_position) {
        const std::int64_t cycle = static_cast<std::int64_t>(position->clock.duration) * tick / time.rate.denom;
        timestamp += HostDuration(m_outputLatency.inNanoseconds(cycle, time.rate.denom));
    }
    // Ignores implausible values from a driver.
    return std::chrono::abs(timestamp - arrival) < MaxLatency ? timestamp : arrival;
}

} // namespace quelto::pipewire
