// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/MpvPlayer.h"

#include "media/reader/ReadFrameTimes.h"
#include "playback/mpv/ClipStream.h"
#include "playback/rules/RepeatedFrames.h"

#include <cmath>
#include <stdexcept>

namespace quelto {

namespace {

enum Property : std::uint64_t { timePosition = 1, duration, endReached };
constexpr std::uint64_t SeekReply = 1;

} // namespace

MpvPlayer::MpvPlayer(Dependencies dependencies)
    : m_dependencies(std::move(dependencies))
    , m_replies(std::make_shared<DetachableQueue>(m_dependencies.main))
    , m_mpv(std::make_shared<MpvHandle>([this, replies = m_replies] { replies->post([this] { takeEvents(); }); }))
{
    m_mpv->observe("time-pos", MPV_FORMAT_DOUBLE, Property::timePosition);
    m_mpv->observe("duration", MPV_FORMAT_DOUBLE, Property::duration);
    m_mpv->observe("eof-reached", MPV_FORMAT_FLAG, Property::endReached);
}

MpvPlayer::~MpvPlayer()
{
    m_reading.request_stop();
    m_mpv->disconnect();
    m_replies->detach();
}

void MpvPlayer::open(const QString& path)
{
    close();
    m_path = path;
    readFrameTimes();
    if (m_isOutputReady) {
        loadFile();
    }
}

void MpvPlayer::close()
{
    m_reading.request_stop();
    m_path.clear();
    m_frames = FrameTimes();
    m_duration.reset();
    m_target.reset();
    m_time = 0;
    m_isSeeking = m_isTargetNew = m_isRequested = m_isLoaded = m_isPlaying = m_isEnded = false;
    m_mpv->set("pause", true);
    m_mpv->command({"stop"});
    m_mpv->command({"set", "vf", ""});
}

void MpvPlayer::play(double rate)
{
    m_rate = rate;
    m_isPlaying = !m_path.isEmpty();
    m_mpv->set("speed", rate);
    m_mpv->set("pause", !m_isPlaying);
}

void MpvPlayer::pause()
{
    m_isPlaying = false;
    m_mpv->set("pause", true);
}

void MpvPlayer::seek(double seconds)
{
    m_target = seconds;
    m_isEnded = false;
    m_isTargetNew = true;
    if (m_isLoaded && !m_isSeeking) {
        startSeek();
    }
}

void MpvPlayer::setVolume(double volume)
{
    // libmpv takes the cube of a hundredth as the gain.
    m_mpv->set("volume", 100 * std::cbrt(volume));
}

double MpvPlayer::position() const
{
    return m_isEnded ? m_duration.value_or(m_time) : m_target.value_or(m_time);
}

void MpvPlayer::setOutputReady()
{
    if (std::exchange(m_isOutputReady, true) || m_path.isEmpty()) {
        return;
    }
    if (m_isRequested) {
        // libmpv deselected the video when its output ended, without a change of its option.
        m_mpv->command({"set", "vid", "no"});
        m_mpv->command({"set", "vid", "auto"});
        seek(position());
    } else {
        loadFile();
    }
}

void MpvPlayer::setOutputLost()
{
    m_isOutputReady = false;
}

void MpvPlayer::loadFile()
{
    m_isRequested = true;
    m_mpv->command({"loadfile", ClipStream::addressOf(m_path)});
}

void MpvPlayer::readFrameTimes()
{
    m_reading = std::stop_source();
    m_dependencies.work([this, path = m_path, stop = m_reading.get_token(), replies = m_replies] {
        std::vector<double> times;
        try {
            times = quelto::readFrameTimes(path, stop);
        } catch (const std::runtime_error&) {
            // The player shows what it can of such a file.
            return;
        }
        replies->post([this, stop, frames = FrameTimes(std::move(times))] {
            if (!stop.stop_requested()) {
                setFrames(frames);
            }
        });
    });
}

void MpvPlayer::setFrames(FrameTimes frames)
{
    m_frames = std::move(frames);
    const auto hasPauses = m_frames.hasPauses();
    if (hasPauses) {
        m_mpv->command({"set", "vf", RepeatedFrames::filter()});
    }
    // An earlier seek did not know the pictures, and a pause that plays already has no repeats.
    if (m_target || (hasPauses && !m_isEnded)) {
        seek(position());
    }
}

void MpvPlayer::startSeek()
{
    m_isSeeking = true;
    m_isTargetNew = false;
    // libmpv shows the first picture that does not appear before the target.
    m_mpv->command({"seek", QByteArray::number(m_frames.seekTime(*m_target), 'f', 6), "absolute+exact"}, SeekReply);
}

void MpvPlayer::seekEnded()
{
    m_isSeeking = false;
    if (m_isTargetNew) {
        startSeek();
    }
    Q_EMIT changed();
}

void MpvPlayer::takeEvents()
{
    m_mpv->takeEvents([this](const mpv_event& event) {
        switch (event.event_id) {
        case MPV_EVENT_FILE_LOADED:
            m_isLoaded = true;
            // libmpv reports no change if the file before was as long.
            m_mpv->get("duration", MPV_FORMAT_DOUBLE, Property::duration);
            if (m_isTargetNew) {
                startSeek();
            }
            break;
        case MPV_EVENT_PLAYBACK_RESTART:
            // Also sent when a file starts.
            if (m_isSeeking) {
                seekEnded();
            }
            break;
        case MPV_EVENT_COMMAND_REPLY:
            if (event.reply_userdata == SeekReply && event.error < 0) {
                seekEnded();
            }
            break;
        case MPV_EVENT_GET_PROPERTY_REPLY:
            if (event.error < 0) {
                break;
            }
            [[fallthrough]];
        case MPV_EVENT_PROPERTY_CHANGE:
            propertyChanged(event);
            break;
        default:
            break;
        }
    });
}

void MpvPlayer::propertyChanged(const mpv_event& event)
{
    const auto& property = *static_cast<const mpv_event_property*>(event.data);
    if (property.format == MPV_FORMAT_NONE) {
        return;
    }
    switch (event.reply_userdata) {
    case Property::timePosition:
        m_time = *static_cast<const double*>(property.data);
        if (m_isPlaying && !m_isSeeking) {
            m_target.reset();
        }
        break;
    case Property::duration:
        m_duration = *static_cast<const double*>(property.data);
        Q_EMIT changed();
        break;
    case Property::endReached:
        if (*static_cast<const int*>(property.data) != 0 && m_isPlaying) {
            m_isEnded = true;
            m_isPlaying = false;
            Q_EMIT ended();
        }
        break;
    default:
        break;
    }
}

} // namespace quelto
