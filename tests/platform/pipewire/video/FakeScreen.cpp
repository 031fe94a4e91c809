// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeScreen.h"

#include "platform/pipewire/video/SpaObjects.h"

#include <spa/buffer/meta.h>
#include <spa/param/buffers.h>
#include <spa/param/format.h>
#include <spa/param/param.h>
#include <spa/param/video/format-utils.h>

#include <stdexcept>
#include <thread>

#include <sys/mman.h>
#include <unistd.h>

namespace quelto::pipewire {

namespace {

using namespace std::chrono_literals;

constexpr auto WaitTime = 10s;
constexpr int CycleMilliseconds = 20;

int bytesPerPixel(spa_video_format format)
{
    return format == SPA_VIDEO_FORMAT_BGR ? 3 : 4;
}

void fill(const FakeScreen::Picture& picture, const FakeScreen::Settings& settings, std::uint8_t* pixels)
{
    const QSize size = settings.size;
    const bool isRedFirst = settings.format == SPA_VIDEO_FORMAT_RGBx || settings.format == SPA_VIDEO_FORMAT_RGBA;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const std::size_t quarter = (y >= size.height() / 2 ? 2 : 0) + (x >= size.width() / 2 ? 1 : 0);
            const std::uint32_t rgb = quarter == 0 ? picture.rgb : QuarterColours[quarter - 1];
            std::uint8_t* pixel = pixels + std::ptrdiff_t{y} * settings.stride + x * bytesPerPixel(settings.format);
            const auto red = static_cast<std::uint8_t>(rgb >> 16);
            const auto blue = static_cast<std::uint8_t>(rgb);
            pixel[0] = isRedFirst ? red : blue;
            pixel[1] = static_cast<std::uint8_t>(rgb >> 8);
            pixel[2] = isRedFirst ? blue : red;
        }
    }
}

} // namespace

const pw_stream_events FakeScreen::StreamEvents = {
    .version = PW_VERSION_STREAM_EVENTS,
    .state_changed =
        [](void* data, pw_stream_state, pw_stream_state state, const char*) {
            auto* screen = static_cast<FakeScreen*>(data);
            const std::scoped_lock guard(screen->m_mutex);
            screen->m_state = state;
            screen->m_isCycleRunning = false;
            screen->m_changed.notify_all();
        },
    .param_changed =
        [](void* data, std::uint32_t id, const spa_pod* object) {
            if (id == SPA_PARAM_Format && object) {
                static_cast<FakeScreen*>(data)->handleFormat(object);
            }
        },
    .add_buffer = [](void* data, pw_buffer* buffer) { static_cast<FakeScreen*>(data)->addBuffer(buffer); },
    .remove_buffer = [](void* data, pw_buffer* buffer) { static_cast<FakeScreen*>(data)->removeBuffer(buffer); },
    .trigger_done = [](void* data) { static_cast<FakeScreen*>(data)->m_isCycleRunning = false; },
};

FakeScreen::FakeScreen(const Settings& settings)
    : m_settings(settings)
{
    initializeLibrary();
    m_loop.reset(pw_thread_loop_new("fake-screen", nullptr));
    pw_thread_loop_start(m_loop.get());
    const LoopLock lock(m_loop.get());
    m_cycleTimer.emplace(pw_thread_loop_get_loop(m_loop.get()), [this] { runCycle(); });
    m_cycleTimer->arm(CycleMilliseconds);
    m_stream.reset(pw_stream_new_simple(
        pw_thread_loop_get_loop(m_loop.get()), "fake-screen",
        pw_properties_new(PW_KEY_MEDIA_CLASS, "Video/Source", PW_KEY_NODE_NAME, "fake-screen", nullptr), &StreamEvents,
        this));
    if (!m_stream) {
        throw std::runtime_error("the fake screen found no PipeWire server");
    }
    offer(std::nullopt);
}

FakeScreen::~FakeScreen()
{
    {
        const LoopLock lock(m_loop.get());
        m_cycleTimer.reset();
        pw_stream_destroy(m_stream.release());
    }
    pw_thread_loop_stop(m_loop.get());
}

std::uint32_t FakeScreen::nodeId()
{
    std::unique_lock guard(m_mutex);
    m_changed.wait_until(guard, std::chrono::system_clock::now() + WaitTime,
                         [this] { return m_state >= PW_STREAM_STATE_PAUSED; });
    guard.unlock();
    const LoopLock lock(m_loop.get());
    return pw_stream_get_node_id(m_stream.get());
}

bool FakeScreen::waitUntilStreaming()
{
    std::unique_lock guard(m_mutex);
    return m_changed.wait_until(guard, std::chrono::system_clock::now() + WaitTime,
                                [this] { return m_state == PW_STREAM_STATE_STREAMING; });
}

bool FakeScreen::show(const Picture& picture)
{
    const HostTime deadline = HostClock::now() + WaitTime;
    while (!tryShow(picture)) {
        if (HostClock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

bool FakeScreen::tryShow(const Picture& picture)
{
    const LoopLock lock(m_loop.get());
    // On a busy machine, a cycle of the graph that starts before the last one has ended takes its picture away.
    pw_buffer* buffer = m_isCycleRunning ? nullptr : pw_stream_dequeue_buffer(m_stream.get());
    if (!buffer) {
        return false;
    }
    spa_data& data = buffer->buffer->datas[0];
    const Memory& memory = m_memory.at(buffer);
    const Settings& settings = memory.settings;
    fill(picture, settings, memory.bytes + settings.offset);
    data.chunk->offset = settings.offset;
    data.chunk->stride = settings.stride;
    data.chunk->size =
        picture.flaw == Flaw::empty ? 0 : static_cast<std::uint32_t>(settings.stride * settings.size.height());
    data.chunk->flags = picture.flaw == Flaw::corruptedChunk ? SPA_CHUNK_FLAG_CORRUPTED : SPA_CHUNK_FLAG_NONE;
    if (auto* header = static_cast<spa_meta_header*>(
            spa_buffer_find_meta_data(buffer->buffer, SPA_META_Header, sizeof(spa_meta_header)))) {
        header->pts = picture.time.value_or(HostClock::now()).time_since_epoch().count();
        header->flags = picture.flaw == Flaw::corruptedHeader ? SPA_META_HEADER_FLAG_CORRUPTED : 0;
    }
    m_isCycleRunning = true;
    pw_stream_queue_buffer(m_stream.get(), buffer);
    pw_stream_trigger_process(m_stream.get());
    return true;
}

/// On a busy machine, the graph may start before the other side takes part in it. Another cycle passes the same picture
/// on to it.
void FakeScreen::runCycle()
{
    if (!m_isCycleRunning && pw_stream_get_state(m_stream.get(), nullptr) == PW_STREAM_STATE_STREAMING) {
        m_isCycleRunning = true;
        pw_stream_trigger_process(m_stream.get());
    }
    m_cycleTimer->arm(CycleMilliseconds);
}

void FakeScreen::change(const Settings& settings)
{
    const LoopLock lock(m_loop.get());
    m_settings = settings;
    offer(std::nullopt);
}

std::optional<std::uint64_t> FakeScreen::modifier() const
{
    const LoopLock lock(m_loop.get());
    return m_modifier;
}

/// Connects the stream at the first call.
void FakeScreen::offer(std::optional<std::uint64_t> chosen)
{
    SpaObjects offers;
    const auto add = [&](std::uint32_t flags, const std::vector<std::uint64_t>& modifiers) {
        const spa_rectangle size = {static_cast<std::uint32_t>(m_settings.size.width()),
                                    static_cast<std::uint32_t>(m_settings.size.height())};
        offers.begin(SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
        offers.addId(SPA_FORMAT_mediaType, SPA_MEDIA_TYPE_video);
        offers.addId(SPA_FORMAT_mediaSubtype, SPA_MEDIA_SUBTYPE_raw);
        offers.addId(SPA_FORMAT_VIDEO_format, m_settings.format);
        if (!modifiers.empty()) {
            offers.addLongs(SPA_FORMAT_VIDEO_modifier, flags, modifiers);
        }
        offers.addRange(SPA_FORMAT_VIDEO_size, SpaRange<spa_rectangle>{size, size, size});
        offers.addRange(SPA_FORMAT_VIDEO_framerate, SpaRange<spa_fraction>{{0, 1}, {0, 1}, {0, 1}});
        offers.addRange(SPA_FORMAT_VIDEO_maxFramerate, SpaRange<spa_fraction>{{120, 1}, {1, 1}, {120, 1}});
        offers.end();
    };
    if (chosen) {
        add(SPA_POD_PROP_FLAG_MANDATORY, {*chosen});
    }
    if (!m_settings.modifiers.empty()) {
        add(SPA_POD_PROP_FLAG_MANDATORY | SPA_POD_PROP_FLAG_DONT_FIXATE, m_settings.modifiers);
    }
    add(0, {});
    const auto count = static_cast<std::uint32_t>(offers.all().size());
    if (pw_stream_get_state(m_stream.get(), nullptr) == PW_STREAM_STATE_UNCONNECTED) {
        pw_stream_connect(m_stream.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY,
                          static_cast<pw_stream_flags>(PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_ALLOC_BUFFERS),
                          offers.all().data(), count);
    } else {
        pw_stream_update_params(m_stream.get(), offers.all().data(), count);
    }
}

void FakeScreen::handleFormat(const spa_pod* format)
{
    spa_video_info_raw info = {};
    spa_format_video_raw_parse(format, &info);
    const spa_pod_prop* modifiers = spa_pod_find_prop(format, nullptr, SPA_FORMAT_VIDEO_modifier);
    if (modifiers && (modifiers->flags & SPA_POD_PROP_FLAG_DONT_FIXATE) != 0) {
        std::uint32_t count = 0;
        std::uint32_t choice = 0;
        const spa_pod* values = spa_pod_get_values(&modifiers->value, &count, &choice);
        offer(static_cast<const std::uint64_t*>(SPA_POD_BODY_CONST(values))[0]);
        return;
    }
    m_modifier = modifiers ? std::optional(static_cast<std::uint64_t>(info.modifier)) : std::nullopt;
    m_agreed = m_settings;
    m_agreed.size = QSize(static_cast<int>(info.size.width), static_cast<int>(info.size.height));
    m_agreed.format = info.format;
    if (m_agreed.stride == 0) {
        m_agreed.stride = m_agreed.size.width() * bytesPerPixel(m_agreed.format);
    }
    SpaObjects requests;
    requests.begin(SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers);
    requests.addRange(SPA_PARAM_BUFFERS_buffers, SpaRange<std::int32_t>{8, 2, 16});
    requests.addInt(SPA_PARAM_BUFFERS_blocks, 1);
    requests.addInt(SPA_PARAM_BUFFERS_size,
                    m_agreed.stride * m_agreed.size.height() + static_cast<int>(m_agreed.offset));
    requests.addInt(SPA_PARAM_BUFFERS_stride, m_agreed.stride);
    requests.addFlags(SPA_PARAM_BUFFERS_dataType, m_modifier ? 1 << SPA_DATA_DmaBuf : 1 << SPA_DATA_MemFd);
    requests.end();
    if (m_settings.hasHeader) {
        requests.begin(SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta);
        requests.addId(SPA_PARAM_META_type, SPA_META_Header);
        requests.addInt(SPA_PARAM_META_size, sizeof(spa_meta_header));
        requests.end();
    }
    pw_stream_update_params(m_stream.get(), requests.all().data(), static_cast<std::uint32_t>(requests.all().size()));
}

void FakeScreen::addBuffer(pw_buffer* buffer)
{
    Memory memory;
    memory.settings = m_agreed;
    memory.size =
        static_cast<std::size_t>(m_agreed.stride) * static_cast<std::size_t>(m_agreed.size.height()) + m_agreed.offset;
    memory.descriptor = memfd_create("fake-screen", MFD_CLOEXEC);
    if (memory.descriptor < 0 || ftruncate(memory.descriptor, static_cast<off_t>(memory.size)) != 0) {
        return;
    }
    void* bytes = mmap(nullptr, memory.size, PROT_READ | PROT_WRITE, MAP_SHARED, memory.descriptor, 0);
    memory.bytes = static_cast<std::uint8_t*>(bytes);
    spa_data& data = buffer->buffer->datas[0];
    data.type = m_modifier ? SPA_DATA_DmaBuf : SPA_DATA_MemFd;
    data.flags = SPA_DATA_FLAG_READWRITE;
    data.fd = memory.descriptor;
    data.mapoffset = 0;
    data.maxsize = static_cast<std::uint32_t>(memory.size);
    m_memory[buffer] = memory;
}

void FakeScreen::removeBuffer(pw_buffer* buffer)
{
    if (const auto found = m_memory.find(buffer); found != m_memory.end()) {
        munmap(found->second.bytes, found->second.size);
        close(found->second.descriptor);
        m_memory.erase(found);
    }
}

} // namespace quelto::pipewire
