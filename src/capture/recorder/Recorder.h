// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "base/tasks/SerialQueue.h"
#include "capture/buffer/ReplayBuffer.h"
#include "capture/recorder/CapturePipeline.h"
#include "capture/recorder/RecorderState.h"
#include "capture/recorder/SaveScheduler.h"
#include "platform/Platform.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

/// Runs capture sessions: fills the replay buffer while the state is Recording, and saves clips from it.
///
/// A changed capture setting restarts the session after the settings have been quiet for 0.8 seconds; the buffer's
/// content is lost. A changed clip length only changes the buffer's window.
///
/// Thread: main. Sessions are built and taken down on the session queue, in the order of the requests.
class Recorder : public QObject {
    Q_OBJECT
    Q_PROPERTY(quelto::CaptureStates::Kind state READ stateKind NOTIFY stateChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY stateChanged)
    Q_PROPERTY(bool isActive READ isActive NOTIFY stateChanged)
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY isSavingChanged)
    Q_PROPERTY(QString captureSummary READ captureSummary NOTIFY captureSummaryChanged)
    Q_PROPERTY(double bufferMB READ bufferMB NOTIFY bufferMBChanged)
    Q_PROPERTY(float micLevel READ micLevel NOTIFY micLevelChanged)
    Q_PROPERTY(bool micActive READ micActive NOTIFY micChanged)
    Q_PROPERTY(QString micWarning READ micWarningText NOTIFY micChanged)
    Q_PROPERTY(bool chatActive READ chatActive NOTIFY chatActiveChanged)

public:
    /// What tests replace: where work runs, the clock, the encoder and the clip writer.
    struct Dependencies {
        AppSettings& settings;
        Platform& platform;
        TaskQueue& main;
        /// Builds and takes down sessions.
        TaskQueue& session;
        /// Writes clips.
        TaskQueue& saves;
        CapturePipeline::OpenEncoder openEncoder = openVideoEncoder;
        SaveScheduler::Clock clock = HostClock::now;
        SaveScheduler::Write write = ClipWriter::write;
    };

    explicit Recorder(const Dependencies& dependencies, QObject* parent = nullptr);
    /// The session and save queues must have ended.
    ~Recorder() override;

    const RecorderState& state() const { return m_state; }
    CaptureState stateKind() const { return m_state.kind; }
    QString errorMessage() const { return m_state.message; }
    bool isActive() const;
    bool isSaving() const { return m_saves.isSaving(); }
    /// Whether a clip is being saved or waiting to be saved.
    bool hasSavesToFinish() const { return m_saves.hasWork(); }
    /// Size, rate and codec of the running session, as text for the user.
    QString captureSummary() const { return m_captureSummary; }
    /// Units: mebibytes.
    double bufferMB() const { return m_bufferMB; }
    float micLevel() const { return m_micLevel; }
    bool micActive() const { return m_isMicActive; }
    /// Why the microphone, or else the system audio, is not being recorded.
    std::optional<QString> micWarning() const;
    QString micWarningText() const { return micWarning().value_or(QString()); }
    /// Whether voice chat is being recorded in its own track, because an application for it runs.
    bool chatActive() const { return !m_chatApps.isEmpty(); }

    /// Does nothing while a session is starting or recording.
    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();
    Q_INVOKABLE void toggle();
    Q_INVOKABLE void restart();

    Q_INVOKABLE void saveClip();
    void saveAutoClip(const Moment& moment, const QString& game);

Q_SIGNALS:
    void stateChanged();
    void isSavingChanged();
    void captureSummaryChanged();
    void bufferMBChanged();
    void micLevelChanged();
    void micChanged();
    void chatActiveChanged();
    void clipSaved(const quelto::SavedClip& clip);
    /// With the translated texts of a RecorderError.
    void saveFailed(const QString& message, const QString& reason);

private:
    void setState(const RecorderState& state);
    void buildSession();
    void settingsChanged();
    void captureStarted(const CaptureReport& report, const CaptureSettings& settings);
    QString currentSignature() const;
    void captureFailed(const QString& message);
    void screenStopped(const QString& message);
    /// Takes the session down, then runs `then` on the main thread.
    void teardown(Task then);
    void updateBufferSize();
    CaptureEvents eventsOf(std::uint64_t session);
    void publishMic(bool isActive, std::optional<QString> warning);
    void setChatApps(const QSet<QString>& apps);
    /// For a session that has ended. The warning of the microphone stays visible.
    void endAudio();
    /// Runs the task on the main thread, unless this object is destroyed first.
    void onMain(HostDuration delay, Task task);
    /// The same, but not if another session has been requested by then.
    void onMainIn(std::uint64_t session, Task task);

    Dependencies m_dependencies;
    RecorderState m_state;
    QString m_captureSummary;
    double m_bufferMB = 0;
    float m_micLevel = 0;
    bool m_isMicActive = false;
    std::optional<QString> m_micWarning;
    std::optional<QString> m_systemAudioWarning;
    /// The ids of the applications that the chat stream records.
    QSet<QString> m_chatApps;
    std::optional<QString> m_runningSignature;
    /// The number of the current session. Results of earlier sessions are ignored.
    std::uint64_t m_session = 0;
    /// Cancels the start of the current session.
    std::stop_source m_sessionStop;
    /// Counts changes of settings, so that only the last of a burst is acted on.
    std::uint64_t m_settingsChange = 0;

    ReplayBuffer m_buffer;
    SaveScheduler m_saves;
    CapturePipeline m_pipeline;
};

} // namespace quelto
