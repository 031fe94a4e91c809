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
/// A save begins 0.25 s after its request, so that the buffer contains what happened just after the moment. A request
/// during another save waits for it and keeps its own end time. A request while capture is starting waits until it has
/// been recording for a second. A request outside a session is ignored.
///
/// Thread: main, for the public interface and all signals. Clips are written on the work queue, from a snapshot.
class SaveScheduler : public QObject {
    Q_OBJECT

public:
    using Clock = std::function<HostTime()>;
    /// Writes the clip. Errors: RecorderError.
    using Write = std::function<SavedClip(ClipRequest)>;

    struct Dependencies {
        const AppSettings& settings;
        ReplayBuffer& buffer;
        const FrontApplication& frontApplication;
        TaskQueue& main;
        TaskQueue& work;
        Clock clock = HostClock::now;
        Write write = ClipWriter::write;
    };

    explicit SaveScheduler(const Dependencies& dependencies, QObject* parent = nullptr);

    bool isSaving() const { return m_isSaving; }
    /// Whether a clip is being saved or waiting to be saved.
    bool hasWork() const { return m_isSaving || m_waiting > 0; }

    /// Saves the last seconds, named after the front application.
    void saveClip();
    /// Saves a clip for a moment, as long as the moment asks for, at most the buffer's length.
    void saveAutoClip(const Moment& moment, const QString& game);

    /// Tells the session's state. Reaching Recording releases the requests that wait for it; leaving Starting in any
    /// other way drops them.
    void setState(CaptureState state);

Q_SIGNALS:
    void isSavingChanged();
    /// Emitted after isSaving has become false.
    void clipSaved(const quelto::SavedClip& clip);
    /// With the translated texts of a RecorderError; emitted after isSaving has become false.
    void saveFailed(const QString& message, const QString& reason);

private:
    /// What is fixed at the time of the request.
    struct Request {
        int seconds = 0;
        QString game;
        std::optional<QString> suffix;
        std::optional<Moment> moment;
    };

    /// A scheduled request: its end, its settings, and how many snapshots had no key frame so far.
    struct Save {
        Request request;
        HostTime endTime;
        int attempt = 0;
        QString folder;
        float systemGain = 1;
        float micGain = 1;
    };

    QString frontApplicationName() const;
    void dispatch(const Request& request, HostTime endTime);
    /// Drops the request if the session has ended.
    void saveWhenFree(const Request& request, HostTime endTime);
    void schedule(const Request& request, HostTime endTime, int attempt);
    void save(const Save& save);
    void retry(const Save& save);
    void setSaving(bool isSaving);
    /// Runs the task on the main thread, unless this object is destroyed first.
    void onMain(HostDuration delay, Task task);

    Dependencies m_dependencies;
    CaptureState m_state = CaptureState::Idle;
    bool m_isSaving = false;
    /// Requests that wait for the running save.
    int m_waiting = 0;
    QList<Request> m_pending;
};

} // namespace quelto
