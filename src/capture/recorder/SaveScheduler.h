// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "base/tasks/TaskQueue.h"
#include "capture/buffer/ReplayBuffer.h"
#include "capture/clip/ClipWriter.h"
#include "capture/recorder/RecorderState.h"
#include "moments/scoring/Moment.h"
#include "platform/FrontApplication.h"

#include <QObject>

#include <functional>
#include <optional>

namespace quelto {

/// Turns requests for clips into runs of the clip writer, one at a time.
///
/// A save begins a quarter of a second after the request, so that what happens just after the moment is in the buffer.
/// Requests that come while another save runs wait for it and keep their own end time. Requests that come while capture
/// is starting wait until it has been up for a second. Outside a session a request is dropped in silence.
///
/// Thread: main, for everything public and all signals; the writing itself runs on the work queue, on a snapshot.
class SaveScheduler : public QObject {
    Q_OBJECT

public:
    using Clock = std::function<HostTime()>;
    /// Writes the clip and gives its path. Errors: RecorderError.
    using Write = std::function<QString(const ClipRequest&)>;

    struct Dependencies {
        const AppSettings& settings;
        ReplayBuffer& buffer;
        const FrontApplication& frontApplication;
        TaskQueue& main;
        TaskQueue& work;
        Clock clock = HostClock::now;
        Write write = ClipWriter::write;
    };

    explicit SaveScheduler(const Dependencies& parts, QObject* parent = nullptr);

    bool isSaving() const { return m_isSaving; }
    /// Whether a clip is being saved or waits for its turn.
    bool hasWork() const { return m_isSaving || m_waiting > 0; }

    /// A clip of the last seconds, named after the program in front.
    void saveClip();
    /// A clip for a moment, as long as the moment asks for and the buffer reaches. Of more than a game can bring about
    /// the rest is dropped.
    void saveAutoClip(const Moment& moment, const QString& game);

    /// The session's state decides what becomes of a request. Reaching Recording lets the waiting ones run; leaving
    /// Starting any other way drops them.
    void setState(CaptureState state);

Q_SIGNALS:
    void isSavingChanged();
    /// After isSaving went back to false.
    void clipSaved(const QString& path);
    /// With a translated message; after isSaving went back to false.
    void saveFailed(const QString& message);

private:
    /// Fixed when the clip is asked for.
    struct Request {
        int seconds = 0;
        QString game;
        std::optional<QString> suffix;
        std::optional<Moment> moment;
    };

    /// A wish on its way: where it ends, how it is to be written, and how often a snapshot had nothing to start with.
    struct Save {
        Request wish;
        HostTime endTime;
        int attempt = 0;
        QString folder;
        float systemGain = 1;
        float micGain = 1;
    };

    QString nameOfWhatIsInFront() const;
    void dispatch(const Request& wish, HostTime endTime);
    /// Drops the wish if the session is over.
    void saveWhenFree(const Request& wish, HostTime endTime);
    void schedule(const Request& wish, HostTime endTime, int attempt);
    void save(const Save& save);
    void retry(const Save& save);
    void setSaving(bool isSaving);
    /// Runs the task on the main thread if this object still lives by then.
    void onMain(HostDuration delay, Task task);

    Dependencies m_dependencies;
    CaptureState m_state = CaptureState::Idle;
    bool m_isSaving = false;
    /// Requests that wait for the running save to end.
    int m_waiting = 0;
    QList<Request> m_pending;
};

} // namespace quelto
