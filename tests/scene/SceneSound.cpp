// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/SceneSound.h"

#include "tests/scene/SceneTime.h"

#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace quelto {

namespace {

constexpr int Rate = 48000;
constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();

struct LoopDestroy {
    void operator()(pw_thread_loop* loop) const
    {
        pw_thread_loop_stop(loop);
        pw_thread_loop_destroy(loop);
    }
};
struct ContextDestroy {
    void operator()(pw_context* context) const { pw_context_destroy(context); }
};
struct CoreDisconnect {
    void operator()(pw_core* core) const { pw_core_disconnect(core); }
};
struct StreamDestroy {
    void operator()(pw_stream* stream) const { pw_stream_destroy(stream); }
};

/// A sine wave that is continuous across calls.
class Sine {
public:
    explicit Sine(double hertz)
        : m_step(2 * std::numbers::pi * hertz / Rate)
    {
    }

    double next()
    {
        m_phase = std::fmod(m_phase + m_step, 2 * std::numbers::pi);
        return std::sin(m_phase);
    }

private:
    double m_step;
    double m_phase = 0;
};

/// Decides for one frame after another whether it is part of a beep.
class BeepGate {
public:
    /// `heardAt` is the time at which the next frame is audible. Beeps start at whole seconds from `start` on.
    void aim(std::int64_t heardAt, std::int64_t start)
    {
        const std::int64_t since = heardAt - start;
        // A beep that is late by less than this has not started yet, because the graph's time is not exact.
        constexpr std::int64_t Tolerance = Second / 200;
        m_coming = since < Tolerance ? 0 : (since - Tolerance) / Second + 1;
        m_coming = std::max(m_coming, m_given + 1);
        m_wait = std::max<std::int64_t>(0, ((m_coming * Second - since) * Rate + Second / 2) / Second);
    }

    void rest() { m_wait = -1; }

    bool next()
    {
        if (m_wait-- == 0) {
            m_left = static_cast<int>(SceneVoice::BeepSeconds * Rate);
            m_given = m_coming;
        }
        return m_left > 0 && m_left-- > 0;
    }

private:
    std::int64_t m_coming = 0;
    std::int64_t m_given = -1;
    std::int64_t m_wait = -1;
    int m_left = 0;
};

} // namespace

struct SceneSound::Stream {
    explicit Stream(SceneVoice wanted);
    void connect();
    void process();
    std::int64_t heardAt() const;
    void fill(float* frames, std::uint32_t count);

    SceneVoice voice;
    Sine left{voice.leftTone};
    Sine right{voice.rightTone};
    Sine beep{SceneVoice::BeepHertz};
    BeepGate gate;
    std::atomic<std::int64_t> start = Never;
    std::atomic<bool> isPlaying = false;
    std::atomic<bool> isLost = false;

    spa_hook coreHook{};
    spa_hook streamHook{};
    // Members are destroyed in reverse order. stop() ends the loop's thread before that.
    std::unique_ptr<pw_thread_loop, LoopDestroy> loop;
    std::unique_ptr<pw_context, ContextDestroy> context;
    std::unique_ptr<pw_core, CoreDisconnect> core;
    std::unique_ptr<pw_stream, StreamDestroy> stream;
};

SceneSound::Stream::Stream(SceneVoice wanted)
    : voice(std::move(wanted))
{
}

void SceneSound::Stream::connect()
{
    static constexpr pw_core_events CoreEvents{
        .version = PW_VERSION_CORE_EVENTS,
        .error =
            [](void* data, std::uint32_t id, int, int, const char*) {
                if (id == PW_ID_CORE)
                    static_cast<Stream*>(data)->isLost = true;
            },
    };
    static constexpr pw_stream_events StreamEvents{
        .version = PW_VERSION_STREAM_EVENTS,
        .state_changed =
            [](void* data, pw_stream_state, pw_stream_state state, const char*) {
                if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED)
                    static_cast<Stream*>(data)->isLost = true;
            },
        .process = [](void* data) { static_cast<Stream*>(data)->process(); },
    };

    core.reset(pw_context_connect(context.get(), nullptr, 0));
    if (!core) {
        isLost = true;
        return;
    }
    // A function instead of the macro pw_core_add_listener, which uses C casts.
    pw_proxy_add_object_listener(reinterpret_cast<pw_proxy*>(core.get()), &coreHook, &CoreEvents, this);
    pw_properties* properties =
        pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY, "Playback", PW_KEY_MEDIA_ROLE, "Game",
                          PW_KEY_APP_NAME, "Quelto scene", PW_KEY_NODE_NAME, voice.name.c_str(), nullptr);
    pw_properties_set(properties, PW_KEY_NODE_LATENCY, "512/48000");
    if (!voice.sink.empty())
        pw_properties_set(properties, PW_KEY_TARGET_OBJECT, voice.sink.c_str());
    stream.reset(pw_stream_new(core.get(), voice.name.c_str(), properties));
    pw_stream_add_listener(stream.get(), &streamHook, &StreamEvents, this);

    std::array<std::uint8_t, 1024> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32;
    format.rate = Rate;
    format.channels = 2;
    format.position[0] = SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;
    std::array<const spa_pod*, 1> parameters{spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format)};
    auto flags = PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS;
    // While the server restarts, the sink may not exist yet. Then the stream must fail and be created again. Without
    // the flag, it would play to the speaker from then on.
    if (!voice.sink.empty())
        flags |= PW_STREAM_FLAG_DONT_RECONNECT;
    if (pw_stream_connect(stream.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY, static_cast<pw_stream_flags>(flags),
                          parameters.data(), parameters.size()) < 0)
        isLost = true;
}

std::int64_t SceneSound::Stream::heardAt() const
{
    pw_time time{};
    if (pw_stream_get_time_n(stream.get(), &time, sizeof time) < 0 || time.rate.denom == 0)
        return Never;
    const std::int64_t ahead = time.delay * Second * time.rate.num / time.rate.denom;
    return time.now + ahead + static_cast<std::int64_t>(time.buffered) * Second / Rate;
}

void SceneSound::Stream::fill(float* frames, std::uint32_t count)
{
    for (std::uint32_t frame = 0; frame < count; ++frame) {
        const double beeping = gate.next() ? SceneVoice::BeepLevel * beep.next() : 0;
        // A channel with a tone has no beep, so that tests can measure the level of the tone.
        frames[2 * frame] = static_cast<float>(voice.leftTone > 0 ? SceneVoice::ToneLevel * left.next() : beeping);
        frames[2 * frame + 1] =
            static_cast<float>(voice.rightTone > 0 ? SceneVoice::ToneLevel * right.next() : beeping);
    }
}

void SceneSound::Stream::process()
{
    pw_buffer* buffer = pw_stream_dequeue_buffer(stream.get());
    if (buffer == nullptr)
        return;
    spa_data& data = buffer->buffer->datas[0];
    constexpr std::uint32_t Stride = 2 * sizeof(float);
    std::uint32_t count = data.maxsize / Stride;
    if (buffer->requested > 0)
        count = std::min(count, static_cast<std::uint32_t>(buffer->requested));
    const std::int64_t firstFlash = start;
    const std::int64_t heard = heardAt();
    if (voice.hasBeeps && firstFlash != Never && heard != Never)
        gate.aim(heard, firstFlash);
    else
        gate.rest();
    fill(static_cast<float*>(data.data), count);
    data.chunk->offset = 0;
    data.chunk->stride = Stride;
    data.chunk->size = count * Stride;
    pw_stream_queue_buffer(stream.get(), buffer);
    isPlaying = true;
}

SceneSound::SceneSound(SceneVoice voice)
    : m_stream(std::make_unique<Stream>(std::move(voice)))
{
    m_stream->loop.reset(pw_thread_loop_new("scene", nullptr));
    m_stream->context.reset(pw_context_new(pw_thread_loop_get_loop(m_stream->loop.get()), nullptr, 0));
    m_stream->connect();
    pw_thread_loop_start(m_stream->loop.get());
}

SceneSound::~SceneSound()
{
    pw_thread_loop_stop(m_stream->loop.get());
}

void SceneSound::setStart(std::int64_t start) noexcept
{
    m_stream->start = start;
}

bool SceneSound::isPlaying() const noexcept
{
    return m_stream->isPlaying;
}

bool SceneSound::isLost() const noexcept
{
    return m_stream->isLost;
}

} // namespace quelto
