// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "export/rules/TimeRange.h"
#include "library/naming/ClipMeta.h"
#include "playback/model/Player.h"

#include <QObject>

#include <functional>
#include <memory>

namespace quelto {

/// What a screen shows of its player: the time, the play state, the event markers and the part that a trim keeps. Each
/// load replaces the file; the player stays.
///
/// Thread: main. Units: seconds from the start of the clip.
class ClipPlayerModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(double time READ time NOTIFY timeChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged)
    Q_PROPERTY(double rate READ rate WRITE setRate NOTIFY rateChanged)
    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(bool trimming READ trimming WRITE setTrimming NOTIFY trimmingChanged)
    Q_PROPERTY(double trimIn READ trimIn NOTIFY trimChanged)
    Q_PROPERTY(double trimOut READ trimOut NOTIFY trimChanged)

public:
    struct Dependencies {
        /// Must outlive the model.
        TaskQueue& main;
        /// Runs tasks that read files, on another thread.
        std::function<void(Task)> work;
    };

    ClipPlayerModel(std::unique_ptr<Player> player, const Dependencies& dependencies, QObject* parent = nullptr);
    ~ClipPlayerModel() override;
    ClipPlayerModel(const ClipPlayerModel&) = delete;
    ClipPlayerModel& operator=(const ClipPlayerModel&) = delete;

    Player& player() const { return *m_player; }

    double time() const { return m_time; }
    /// 0 until it is known, and for a file that cannot be played.
    double duration() const { return m_duration; }
    bool isPlaying() const { return m_isPlaying; }
    /// The chosen speed, also while paused.
    double rate() const { return m_rate; }
    /// From 0 to 1.
    double volume() const { return m_volume; }
    /// From the clip's sidecar, which is read in the background: a disk can take long.
    const QList<ClipMeta::Event>& events() const { return m_events; }
    /// Whether the user chooses the part that a trim keeps. That part then plays as a loop.
    bool trimming() const { return m_isTrimming; }
    double trimIn() const { return m_kept.start; }
    double trimOut() const { return m_kept.end; }

    /// Opens the clip and plays it.
    Q_INVOKABLE void load(const QString& path);
    /// Opens the clip and shows its first picture, and nothing before that.
    Q_INVOKABLE void prepare(const QString& path);
    /// Starts again from the beginning, or from `trimIn`, if the end is reached.
    Q_INVOKABLE void play();
    Q_INVOKABLE void pause();
    Q_INVOKABLE void toggle();
    /// Limits the position to the clip. `time` changes at once.
    Q_INVOKABLE void seek(double seconds);
    /// Pauses, and shows the next picture, or the previous one.
    Q_INVOKABLE void stepForward();
    Q_INVOKABLE void stepBack();
    /// Plays from two seconds before an event.
    Q_INVOKABLE void playEvent(double eventTime);
    /// Applies at once while playing, and otherwise when playing starts.
    void setRate(double rate);
    void setVolume(double volume);
    Q_INVOKABLE void toggleMuted() { setVolume(m_volume == 0 ? 1 : 0); }
    void setTrimming(bool isTrimming);
    /// Starts trimming with the whole clip.
    Q_INVOKABLE void startTrimming();
    /// Moves the start of the part to keep, and shows the picture there.
    Q_INVOKABLE void dragTrimIn(double seconds);
    /// Moves the end of the part to keep, and shows the picture there.
    Q_INVOKABLE void dragTrimOut(double seconds);
    /// Closes the file.
    Q_INVOKABLE void stop();

Q_SIGNALS:
    void timeChanged();
    void durationChanged();
    void isPlayingChanged();
    void rateChanged();
    void volumeChanged();
    void eventsChanged();
    void trimmingChanged();
    void trimChanged();

private:
    /// Follows the player: 30 times a second while it plays, and whenever it changes.
    void update();
    void scheduleTick();
    void open(const QString& path);
    void readEvents(const QString& path);
    void setEvents(const QList<ClipMeta::Event>& events);
    void setTime(double time);
    void setDuration(double duration);
    void setIsPlaying(bool isPlaying);
    void setKept(const TimeRange& kept);

    Dependencies m_dependencies;
    const std::shared_ptr<DetachableQueue> m_replies;
    std::unique_ptr<Player> m_player;
    /// Of the present clip: events that are read for an earlier one are dropped.
    std::shared_ptr<char> m_load;
    /// Exists while ticks are scheduled.
    std::shared_ptr<char> m_ticker;
    double m_time = 0;
    double m_duration = 0;
    double m_rate = 1;
    double m_volume = 1;
    QList<ClipMeta::Event> m_events;
    TimeRange m_kept;
    bool m_isPlaying = false;
    bool m_isTrimming = false;
};

} // namespace quelto
