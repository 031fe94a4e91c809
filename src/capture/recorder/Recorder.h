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

/// The capture session: keeps screen and sound flowing into the replay buffer while its state is Recording, and makes
/// clips of what is in it.
///
/// A change of a capture setting restarts the session by itself once the settings have been quiet for 0.8 seconds; that
/// loses what was buffered. A change of the clip's length only moves the buffer's window.
///
/// Thread: main. The session is built and taken down on the session queue, in the order in which it was asked for.
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

public:
    /// What a test replaces: where work runs, what time it is, and who encodes and writes.
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

    explicit Recorder(const Dependencies& parts, QObject* parent = nullptr);
    /// The queues must have ended before.
    ~Recorder() override;

    const RecorderState& state() const { return m_state; }
    CaptureState stateKind() const { return m_state.kind; }
    QString errorMessage() const { return m_state.message; }
    bool isActive() const;
    bool isSaving() const { return m_saves.isSaving(); }
    /// Whether a clip is being saved or waits for its turn.
    bool hasSavesToFinish() const { return m_saves.hasWork(); }
    /// Size, rate and codec of the running session, for the user.
    QString captureSummary() const { return m_captureSummary; }
    /// Units: mebibytes.
    double bufferMB() const { return m_bufferMB; }
    float micLevel() const { return m_micLevel; }
    bool micActive() const { return m_isMicActive; }
    /// Why the microphone, or else the system sound, is not heard.
    std::optional<QString> micWarning() const;
    QString micWarningText() const { return micWarning().value_or(QString()); }

    /// Does nothing while a session runs or begins.
    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();
    Q_INVOKABLE void toggle();
    void restart();

    Q_INVOKABLE void saveClip();
    void saveAutoClip(const Moment& moment, const QString& game);

Q_SIGNALS:
    void stateChanged();
    void isSavingChanged();
    void captureSummaryChanged();
    void bufferMBChanged();
    void micLevelChanged();
    void micChanged();
    void clipSaved(const QString& path);
    void saveFailed(const QString& message);

private:
    void setState(const RecorderState& state);
    void buildSession();
    void settingsChanged();
    void captureStarted(const CaptureReport& report, const QString& signature);
    void captureFailed(const QString& message);
    void screenStopped(const QString& message);
    /// Takes the session down and then runs the task on the main thread.
    void teardown(Task then);
    void updateBufferSize();
    CaptureRequest requestFromSettings() const;
    CaptureEvents eventsOf(std::uint64_t session);
    void publishMic(bool isActive, std::optional<QString> warning);
    /// Runs the task on the main thread if this object still lives by then.
    void onMain(HostDuration delay, Task task);
    /// The same, unless another session was asked for by then.
    void onMainIn(std::uint64_t session, Task task);

    Dependencies m_dependencies;
    RecorderState m_state;
    QString m_captureSummary;
    double m_bufferMB = 0;
    float m_micLevel = 0;
    bool m_isMicActive = false;
    std::optional<QString> m_micWarning;
    std::optional<QString> m_systemAudioWarning;
    /// The microphone has told of itself since the session was begun; that is newer than how it came up.
    bool m_hasMicEvent = false;
    std::optional<QString> m_runningSignature;
    /// Counts sessions, so that what an ended one still had to say is not taken for the present one's.
    std::uint64_t m_session = 0;
    /// Counts changes of settings, so that only the last of a burst is acted on.
    std::uint64_t m_settingsChange = 0;

    ReplayBuffer m_buffer;
    SaveScheduler m_saves;
    CapturePipeline m_pipeline;
};

} // namespace quelto
