// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/model/ClipPlayerModel.h"

#include "playback/rules/PlaybackRules.h"

#include <cmath>

namespace quelto {

namespace {

constexpr auto TickInterval = fromSeconds(1.0 / 30);
/// Smaller corrections of the length are not worth a new layout of the timeline. Units: seconds.
constexpr double MinDurationChange = 0.01;

} // namespace

ClipPlayerModel::ClipPlayerModel(std::unique_ptr<Player> player, const Dependencies& dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
    , m_replies(std::make_shared<DetachableQueue>(dependencies.main))
    , m_player(std::move(player))
{
    connect(m_player.get(), &Player::changed, this, &ClipPlayerModel::update);
    connect(m_player.get(), &Player::ended, this, &ClipPlayerModel::update);
}

ClipPlayerModel::~ClipPlayerModel()
{
    m_replies->detach();
}

void ClipPlayerModel::load(const QString& path)
{
    open(path);
    play();
}

void ClipPlayerModel::prepare(const QString& path)
{
    m_player->close();
    open(path);
    setIsPlaying(false);
}

void ClipPlayerModel::open(const QString& path)
{
    m_player->open(path);
    setTime(0);
    setDuration(0);
    setKept({});
    setEvents({});
    readEvents(path);
}

void ClipPlayerModel::readEvents(const QString& path)
{
    m_load = std::make_shared<char>();
    m_dependencies.work([this, path, load = std::weak_ptr(m_load), replies = m_replies] {
        // On a slow disk, another clip can have been opened since.
        if (load.expired()) {
            return;
        }
        const auto events = ClipMeta::load(path).value_or(ClipMeta()).events;
        replies->post([this, load, events] {
            if (!load.expired()) {
                setEvents(events);
            }
        });
    });
}

void ClipPlayerModel::play()
{
    if (isAtEnd(m_time, m_duration)) {
        seek(m_isTrimming ? m_kept.start : 0);
    }
    m_player->play(m_rate);
    setIsPlaying(true);
}

void ClipPlayerModel::pause()
{
    m_player->pause();
    setIsPlaying(false);
}

void ClipPlayerModel::toggle()
{
    if (m_isPlaying) {
        pause();
    } else {
        play();
    }
}

void ClipPlayerModel::seek(double seconds)
{
    // At once: the timeline does not wait for the decoder.
    setTime(limitedPosition(seconds, m_duration));
    m_player->seek(m_time);
}

void ClipPlayerModel::stepForward()
{
    pause();
    if (const auto next = m_player->frames().nextAfter(m_time)) {
        seek(*next);
    }
}

void ClipPlayerModel::stepBack()
{
    pause();
    if (const auto previous = m_player->frames().previousBefore(m_time)) {
        seek(*previous);
    }
}

void ClipPlayerModel::playEvent(double eventTime)
{
    seek(buildUpOf(eventTime));
    play();
}

void ClipPlayerModel::setRate(double rate)
{
    if (rate == m_rate) {
        return;
    }
    m_rate = rate;
    if (m_isPlaying) {
        m_player->play(rate);
    }
    Q_EMIT rateChanged();
}

void ClipPlayerModel::setVolume(double volume)
{
    if (volume == m_volume) {
        return;
    }
    m_volume = volume;
    m_player->setVolume(volume);
    Q_EMIT volumeChanged();
}

void ClipPlayerModel::setTrimming(bool isTrimming)
{
    if (isTrimming != m_isTrimming) {
        m_isTrimming = isTrimming;
        Q_EMIT trimmingChanged();
    }
}

void ClipPlayerModel::startTrimming()
{
    setKept({.start = 0, .end = m_duration});
    setTrimming(true);
}

void ClipPlayerModel::dragTrimIn(double seconds)
{
    setKept(withStart(m_kept, seconds));
    seek(m_kept.start);
}

void ClipPlayerModel::dragTrimOut(double seconds)
{
    setKept(withEnd(m_kept, seconds, m_duration));
    seek(m_kept.end);
}

void ClipPlayerModel::stop()
{
    pause();
    m_player->close();
}

void ClipPlayerModel::update()
{
    const auto position = m_player->position();
    setTime(std::isfinite(position) ? position : 0);
    setIsPlaying(m_player->rate() != 0);
    const auto duration = m_player->duration();
    if (duration && std::isfinite(*duration) && std::abs(*duration - m_duration) > MinDurationChange) {
        setDuration(*duration);
        if (m_kept.end == 0) {
            setKept({.start = m_kept.start, .end = m_duration});
        }
    }
    if (m_isTrimming && m_isPlaying && m_kept.end <= m_time) {
        seek(m_kept.start);
    }
}

void ClipPlayerModel::setEvents(const QList<ClipMeta::Event>& events)
{
    if (events != m_events) {
        m_events = events;
        Q_EMIT eventsChanged();
    }
}

void ClipPlayerModel::setTime(double time)
{
    if (time != m_time) {
        m_time = time;
        Q_EMIT timeChanged();
    }
}

void ClipPlayerModel::setDuration(double duration)
{
    if (duration != m_duration) {
        m_duration = duration;
        Q_EMIT durationChanged();
    }
}

void ClipPlayerModel::setIsPlaying(bool isPlaying)
{
    if (isPlaying == m_isPlaying) {
        return;
    }
    m_isPlaying = isPlaying;
    if (isPlaying) {
        m_ticker = std::make_shared<char>();
        scheduleTick();
    } else {
        m_ticker.reset();
    }
    Q_EMIT isPlayingChanged();
}

void ClipPlayerModel::setKept(const TimeRange& kept)
{
    if (kept != m_kept) {
        m_kept = kept;
        Q_EMIT trimChanged();
    }
}

void ClipPlayerModel::scheduleTick()
{
    m_dependencies.main.postAfter(TickInterval, [this, ticker = std::weak_ptr(m_ticker)] {
        if (ticker.expired()) {
            return;
        }
        update();
        // The update can have stopped or restarted the ticks.
        if (!ticker.expired()) {
            scheduleTick();
        }
    });
}

} // namespace quelto
