// SPDX-License-Identifier: GPL-3.0-or-later
#include "TonePlayer.h"

#include "platform/pipewire/core/PipeWireHandles.h"

#include <spa/param/audio/format-utils.h>

#include <numbers>
#include <stdexcept>

namespace quelto::pipewire {

namespace {

constexpr int Rate = 48000;
constexpr std::int64_t BeepFrames = Rate / 20;

} // namespace

struct TonePlayer::State {
    Tone tone;
    std::function<void(HostTime)> onBeep;
    std::int64_t position = 0;
    ThreadLoopPtr loop;
    StreamPtr stream;

    float value(double hertz) const
    {
        if (tone.isBeeping && position % Rate >= BeepFrames) {
            return 0;
        }
        const double phase = 2 * std::numbers::pi * hertz * static_cast<double>(position % Rate) / Rate;
        // A beep starts at its full level, so that its start can be found exactly.
        return static_cast<float>(tone.isBeeping ? std::cos(phase) : std::sin(phase)) * tone.amplitude;
    }

    void process()
    {
        pw_buffer* buffer = pw_stream_dequeue_buffer(stream.get());
        if (!buffer) {
            return;
        }
        pw_time time = {};
        pw_stream_get_time_n(stream.get(), &time, sizeof time);
        spa_data& data = buffer->buffer->datas[0];
        auto* values = static_cast<float*>(data.data);
        auto frames = static_cast<std::uint32_t>(data.maxsize / (2 * sizeof(float)));
        if (buffer->requested > 0) {
            frames = std::min(frames, static_cast<std::uint32_t>(buffer->requested));
        }
        const HostTime begin(HostDuration(time.now + std::int64_t(time.queued) * 1'000'000'000 / Rate));
        for (std::uint32_t i = 0; i < frames; ++i) {
            if (tone.isBeeping && onBeep && position % Rate == 0) {
                onBeep(begin + HostDuration(std::int64_t(i) * 1'000'000'000 / Rate));
            }
            values[2 * i] = value(tone.leftHertz);
            values[2 * i + 1] = value(tone.rightHertz);
            ++position;
        }
        data.chunk->offset = 0;
        data.chunk->stride = 2 * sizeof(float);
        data.chunk->size = frames * static_cast<std::uint32_t>(data.chunk->stride);
        buffer->size = frames;
        pw_stream_queue_buffer(stream.get(), buffer);
    }

    void open()
    {
        static const pw_stream_events events = {
            .version = PW_VERSION_STREAM_EVENTS,
            .process = [](void* data) { static_cast<State*>(data)->process(); },
        };
        pw_properties* properties =
            pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY, "Playback", PW_KEY_NODE_NAME,
                              "tone-player", "state.restore-target", "false", nullptr);
        if (!tone.target.isEmpty()) {
            pw_properties_set(properties, PW_KEY_TARGET_OBJECT, tone.target.toUtf8().constData());
            // Otherwise the session manager treats a target that is the default device as no choice.
            pw_properties_set(properties, PW_KEY_NODE_DONT_RECONNECT, "true");
        }
        stream.reset(
            pw_stream_new_simple(pw_thread_loop_get_loop(loop.get()), "tone-player", properties, &events, this));
        if (!stream) {
            throw std::runtime_error("the tone player found no sound server");
        }
        spa_audio_info_raw format = {};
        format.format = SPA_AUDIO_FORMAT_F32;
        format.rate = Rate;
        format.channels = 2;
        format.position[0] = SPA_AUDIO_CHANNEL_FL;
        format.position[1] = SPA_AUDIO_CHANNEL_FR;
        std::array<std::byte, 1024> memory;
        spa_pod_builder builder = {};
        spa_pod_builder_init(&builder, memory.data(), memory.size());
        std::array<const spa_pod*, 1> parameters = {
            spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format)};
        pw_stream_connect(stream.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY,
                          static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS |
                                                       PW_STREAM_FLAG_RT_PROCESS),
                          parameters.data(), 1);
    }
};

TonePlayer::TonePlayer(const Tone& tone, std::function<void(HostTime)> onBeep)
    : m_state(std::make_unique<State>())
{
    pw_init(nullptr, nullptr);
    m_state->tone = tone;
    m_state->onBeep = std::move(onBeep);
    m_state->loop.reset(pw_thread_loop_new("tone-player", nullptr));
    pw_thread_loop_start(m_state->loop.get());
    pw_thread_loop_lock(m_state->loop.get());
    m_state->open();
    pw_thread_loop_unlock(m_state->loop.get());
}

TonePlayer::~TonePlayer()
{
    pw_thread_loop_lock(m_state->loop.get());
    // The real-time thread uses the pointer until the stream is destroyed, so it must not be reset before.
    pw_stream_destroy(m_state->stream.get());
    pw_thread_loop_unlock(m_state->loop.get());
    pw_thread_loop_stop(m_state->loop.get());
    static_cast<void>(m_state->stream.release());
}

} // namespace quelto::pipewire
