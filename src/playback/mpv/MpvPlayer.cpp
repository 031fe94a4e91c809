// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/MpvPlayer.h"

#include "media/reader/ReadFrameTimes.h"
#include "playback/mpv/ClipStream.h"
#include "playback/rules/RepeatedFrames.h"

#include <cmath>
#include <stdexcept>

namespace quelto {

namespace {

enum Property : std::uint64_t { timePosition = 1, duration, endReached, hasVideo };
constexpr std::uint64_t SeekReply = 1;
constexpr std::uint64_t FileReply = 2;

} // namespace

MpvPlayer::MpvPlayer(Dependencies dependencies)
    : m_dependencies(std::move(dependencies))
    , m_replies(std::make_shared<DetachableQueue>(m_dependencies.main))
    , m_mpv(std::make_shared<MpvHandle>([this, replies = m_replies] { replies->post([this] { takeEvents(); }); }))
{
    m_mpv->observe("time-pos", MPV_FORMAT_DOUBLE, Property::timePosition);
    m_mpv->observe("duration", MPV_FORMAT_DOUBLE, Property::duration);
    m_mpv->observe("eof-reached", MPV_FORMAT_FLAG, Property::endReached);
    m_mpv->observe("vo-configured", MPV_FORMAT_FLAG, Property::hasVideo);
}

MpvPlayer::~MpvPlayer()
{
    m_reading.request_stop();
    m_mpv->disconnect();
    m_replies->detach();
}

void MpvPlayer::open(const QString& path)
{
    forgetFile();
    m_path = path;
    m_isOpening = true;
    readFrameTimes();
    requestFile();
}

void MpvPlayer::close()
{
    forgetFile();
    m_isBlank = true;
    Q_EMIT pictureOutdated();
    requestFile();
}

void MpvPlayer::forgetFile()
{
    if (m_isRequested) {
        m_hasEarlierFile = true;
        m_mpv->set("pause", true);
    }
    m_reading.request_stop();
    m_path.clear();
    m_frames = FrameTimes();
    m_duration.reset();
    m_target.reset();
    m_time = 0;
    m_isOpening = m_isRequested = m_isBegun = m_isLoaded = false;
    m_isSeeking = m_isTargetNew = m_isPlaying = m_isEnded = false;
}

void MpvPlayer::requestFile()
{
    if (m_isRequestPending) {
        return;
    }
    const bool isWanted = !m_path.isEmpty() && m_isOutputReady && !m_isRequested;
    if (std::exchange(m_hasEarlierFile, false)) {
        m_mpv->command({"stop"});
        m_isRequestPending = m_mpv->command({"set", "vf", ""}, isWanted ? 0 : FileReply);
    }
    if (isWanted) {
        m_isRequested = true;
        if (m_frames.hasPauses()) {
            m_mpv->command({"set", "vf", RepeatedFrames::filter()});
        }
        applyRate();
        m_isRequestPending = m_mpv->command({"loadfile", ClipStream::addressOf(m_path)}, FileReply);
    }
}

void MpvPlayer::applyRate()
{
    if (m_isRequested) {
        m_mpv->set("speed", m_rate);
        m_mpv->set("pause", !m_isPlaying);
    }
}

void MpvPlayer::play(double rate)
{
    m_rate = rate;
    m_isPlaying = !m_path.isEmpty();
    applyRate();
}

void MpvPlayer::pause()
{
    m_isPlaying = false;
    applyRate();
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
        requestFile();
    }
}

void MpvPlayer::setOutputLost()
{
    m_isOutputReady = false;
}

void MpvPlayer::openingEnded()
{
    m_isOpening = false;
    if (std::exchange(m_isBlank, false)) {
        Q_EMIT pictureOutdated();
    }
    Q_EMIT changed();
}

void MpvPlayer::readFrameTimes()
{
    m_reading = std::stop_source();
    m_dependencies.work([this, path = m_path, stop = m_reading.get_token(), replies = m_replies] {
        // On a slow disk, another clip can have been opened since.
        if (stop.stop_requested()) {
            return;
        }
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
    if (hasPauses && m_isRequested) {
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
        case MPV_EVENT_START_FILE:
            m_isBegun = m_isRequested && !m_isRequestPending;
            break;
        case MPV_EVENT_FILE_LOADED:
            if (m_isBegun) {
                fileLoaded();
            }
            break;
        case MPV_EVENT_END_FILE:
            // Only of a file that cannot be played: others stay open.
            if (std::exchange(m_isBegun, false)) {
                m_isLoaded = false;
                openingEnded();
            }
            break;
        case MPV_EVENT_PLAYBACK_RESTART:
            if (m_isLoaded) {
                playbackRestarted();
            }
            break;
        case MPV_EVENT_COMMAND_REPLY:
            commandEnded(event);
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

void MpvPlayer::fileLoaded()
{
    m_isLoaded = true;
    // libmpv reports no change if the file before was as long.
    m_mpv->get("duration", MPV_FORMAT_DOUBLE, Property::duration);
    if (m_isTargetNew) {
        startSeek();
    }
}

void MpvPlayer::playbackRestarted()
{
    if (m_isOpening) {
        openingEnded();
    }
    if (m_isSeeking) {
        seekEnded();
    }
}

void MpvPlayer::commandEnded(const mpv_event& reply)
{
    if (reply.reply_userdata == FileReply) {
        m_isRequestPending = false;
        requestFile();
    } else if (reply.reply_userdata == SeekReply && reply.error < 0 && m_isLoaded) {
        seekEnded();
    }
}

void MpvPlayer::propertyChanged(const mpv_event& event)
{
    const auto& property = *static_cast<const mpv_event_property*>(event.data);
    if (property.format == MPV_FORMAT_NONE) {
        return;
    }
    if (event.reply_userdata == Property::hasVideo) {
        // libmpv draws black after a file that cannot be played, and reports no new picture.
        if (*static_cast<const int*>(property.data) == 0 && !m_isOpening) {
            Q_EMIT pictureOutdated();
        }
        return;
    }
    if (!m_isLoaded) {
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
