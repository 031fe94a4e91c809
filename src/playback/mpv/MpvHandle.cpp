// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/MpvHandle.h"

#include "playback/mpv/ClipStream.h"
#include "playback/mpv/EndingWork.h"

#include <array>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace quelto {

namespace {

constexpr std::array<std::pair<const char*, const char*>, 23> Options{{
    {"config", "no"},
    {"load-scripts", "no"},
    {"ytdl", "no"},
    {"osc", "no"},
    {"osd-level", "0"},
    {"terminal", "no"},
    {"input-default-bindings", "no"},
    {"input-vo-keyboard", "no"},
    {"idle", "yes"},
    // The last picture stays.
    {"keep-open", "yes"},
    {"pause", "yes"},
    // A seek leaves out the pictures that an edit list hides before the start.
    {"start", "0"},
    {"vo", "libmpv"},
    // An output that can show decoded pictures from the graphics card changes this.
    {"hwdec", "no"},
    {"hr-seek", "yes"},
    // Seeks decode each picture, so that the requested one is shown.
    {"hr-seek-framedrop", "no"},
    // Only FFmpeg's reader of MPEG-4 and QuickTime files: others follow playlists and open addresses.
    {"demuxer", "lavf"},
    {"demuxer-lavf-format", "mov"},
    {"access-references", "no"},
    {"autoload-files", "no"},
    {"sid", "no"},
    {"audio-client-name", "Quelto"},
    {"audio-fallback-to-null", "yes"},
}};

/// Scripts inside libmpv, each with a thread. Versions differ in which ones they have.
constexpr std::array BuiltInScripts{"load-stats-overlay", "load-osd-console", "load-auto-profiles", "load-console",
                                    "load-commands",      "load-positioning", "load-select"};

void checked(int status)
{
    if (status < 0) {
        throw std::runtime_error(mpv_error_string(status));
    }
}

} // namespace

MpvHandle::MpvHandle(std::function<void()> onEvents)
    : m_mpv(mpv_create())
    , m_onEvents(std::move(onEvents))
{
    if (m_mpv == nullptr) {
        throw std::runtime_error("libmpv could not start");
    }
    try {
        for (const auto& [name, value] : Options) {
            checked(mpv_set_option_string(m_mpv, name, value));
        }
        // Not checked: a libmpv built without one of them chooses. It would also try outputs that print errors.
        mpv_set_option_string(m_mpv, "ao", "pipewire,pulse");
        for (const auto* script : BuiltInScripts) {
            mpv_set_option_string(m_mpv, script, "no");
        }
        checked(mpv_initialize(m_mpv));
        ClipStream::addTo(*m_mpv);
    } catch (...) {
        mpv_terminate_destroy(m_mpv);
        throw;
    }
    mpv_set_wakeup_callback(
        m_mpv, [](void* self) { static_cast<MpvHandle*>(self)->m_onEvents(); }, this);
}

MpvHandle::~MpvHandle()
{
    disconnect();
    std::thread([mpv = m_mpv, ending = EndingWork()] { mpv_terminate_destroy(mpv); }).detach();
}

void MpvHandle::disconnect()
{
    mpv_set_wakeup_callback(m_mpv, nullptr, nullptr);
}

bool MpvHandle::command(const QByteArrayList& arguments, std::uint64_t reply)
{
    std::vector<const char*> words;
    for (const auto& argument : arguments) {
        words.push_back(argument.constData());
    }
    words.push_back(nullptr);
    return mpv_command_async(m_mpv, reply, words.data()) >= 0;
}

void MpvHandle::set(const char* property, bool value)
{
    int flag = value ? 1 : 0;
    mpv_set_property_async(m_mpv, 0, property, MPV_FORMAT_FLAG, &flag);
}

void MpvHandle::set(const char* property, double value)
{
    mpv_set_property_async(m_mpv, 0, property, MPV_FORMAT_DOUBLE, &value);
}

void MpvHandle::observe(const char* property, mpv_format format, std::uint64_t number)
{
    checked(mpv_observe_property(m_mpv, number, property, format));
}

void MpvHandle::get(const char* property, mpv_format format, std::uint64_t number)
{
    mpv_get_property_async(m_mpv, number, property, format);
}

void MpvHandle::takeEvents(const std::function<void(const mpv_event&)>& onEvent)
{
    for (const auto* event = mpv_wait_event(m_mpv, 0); event->event_id != MPV_EVENT_NONE;
         event = mpv_wait_event(m_mpv, 0)) {
        onEvent(*event);
    }
}

} // namespace quelto
