// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/recorder/Recorder.h"

#include "base/language/T.h"
#include "capture/clip/RecorderError.h"
#include "platform/PlatformError.h"

#include <QPointer>

namespace quelto {

namespace {

using std::chrono::milliseconds;

// Settings come in bursts, a slider's above all; the pipeline is rebuilt once they are quiet.
constexpr milliseconds SettingsQuiet{800};
constexpr milliseconds StatisticsInterval{2000};
constexpr double BytesPerMebibyte = 1024.0 * 1024.0;

QString summaryOf(const CaptureReport& report)
{
    return QStringLiteral("%1×%2 • %3 FPS • %4 Mbps • %5")
        .arg(report.outputSize.width())
        .arg(report.outputSize.height())
        .arg(report.framesPerSecond)
        .arg(QString::number(report.bitsPerSecond / 1e6, 'f', 0), labelOf(report.codec));
}

} // namespace

Recorder::Recorder(const Dependencies& parts, QObject* parent)
    : QObject(parent)
    , m_dependencies(parts)
    , m_saves({.settings = parts.settings,
               .buffer = m_buffer,
               .frontApplication = *parts.platform.frontApplication,
               .main = parts.main,
               .work = parts.saves,
               .clock = parts.clock,
               .write = parts.write})
    , m_pipeline(parts.platform, m_buffer, parts.openEncoder)
{
    connect(&m_saves, &SaveScheduler::isSavingChanged, this, &Recorder::isSavingChanged);
    connect(&m_saves, &SaveScheduler::clipSaved, this, &Recorder::clipSaved);
    connect(&m_saves, &SaveScheduler::saveFailed, this, &Recorder::saveFailed);
    connect(&m_dependencies.settings, &AppSettings::changed, this, [this] {
        onMain(SettingsQuiet, [this, change = ++m_settingsChange] {
            if (change == m_settingsChange) {
                settingsChanged();
            }
        });
    });
    onMain(StatisticsInterval, [this] { updateBufferSize(); });
}

Recorder::~Recorder() = default;

bool Recorder::isActive() const
{
    return m_state.kind == CaptureState::Recording || m_state.kind == CaptureState::Starting;
}

std::optional<QString> Recorder::micWarning() const
{
    return m_micWarning ? m_micWarning : m_systemAudioWarning;
}

void Recorder::start()
{
    if (!isActive()) {
        setState({.kind = CaptureState::Starting});
        buildSession();
    }
}

void Recorder::buildSession()
{
    const auto session = ++m_session;
    m_hasMicEvent = false;
    m_dependencies.session.post([this, session, request = requestFromSettings(), events = eventsOf(session),
                                 seconds = m_dependencies.settings.bufferSeconds(),
                                 signature = m_dependencies.settings.captureSignature()] {
        QString message;
        try {
            const auto report = m_pipeline.start(request, seconds, events);
            onMainIn(session, [this, report, signature] { captureStarted(report, signature); });
            return;
        } catch (const RecorderError& error) {
            message = error.message();
        } catch (const PlatformError& error) {
            message = error.message();
        } catch (const std::exception& error) {
            message = QString::fromUtf8(error.what());
        }
        m_pipeline.stop();
        onMainIn(session, [this, message] { captureFailed(message); });
    });
}

void Recorder::captureStarted(const CaptureReport& report, const QString& signature)
{
    if (signature != m_dependencies.settings.captureSignature()) {
        // A setting changed while the session was being built with the old ones. What waits for it goes on waiting.
        teardown([this] { buildSession(); });
        return;
    }
    m_runningSignature = signature;
    m_captureSummary = summaryOf(report);
    Q_EMIT captureSummaryChanged();
    if (!m_hasMicEvent) {
        publishMic(report.isMicActive, report.micWarning);
    }
    setState({.kind = CaptureState::Recording});
}

void Recorder::captureFailed(const QString& message)
{
    publishMic(false, m_micWarning);
    setState({.kind = CaptureState::Error, .message = message});
}

void Recorder::screenStopped(const QString& message)
{
    teardown([this, message] { setState({.kind = CaptureState::Error, .message = T("Kayıt durdu: {0}", message)}); });
}

void Recorder::stop()
{
    teardown([this] {
        setState({.kind = CaptureState::Idle});
        m_bufferMB = 0;
        Q_EMIT bufferMBChanged();
    });
}

void Recorder::restart()
{
    teardown([this] {
        setState({.kind = CaptureState::Idle});
        start();
    });
}

void Recorder::toggle()
{
    isActive() ? stop() : start();
}

void Recorder::saveClip()
{
    m_saves.saveClip();
}

void Recorder::saveAutoClip(const Moment& moment, const QString& game)
{
    m_saves.saveAutoClip(moment, game);
}

void Recorder::teardown(Task then)
{
    const auto session = ++m_session;
    m_dependencies.session.post([this, session, then = std::move(then)] {
        m_pipeline.stop();
        onMainIn(session, [this, then] {
            m_runningSignature.reset();
            m_systemAudioWarning.reset();
            m_micLevel = 0;
            Q_EMIT micLevelChanged();
            publishMic(false, m_micWarning);
            then();
        });
    });
}

void Recorder::settingsChanged()
{
    m_buffer.configure(m_dependencies.settings.bufferSeconds());
    if (m_state.kind == CaptureState::Recording && m_runningSignature != m_dependencies.settings.captureSignature()) {
        restart();
    }
}

void Recorder::updateBufferSize()
{
    if (m_state.kind == CaptureState::Recording) {
        m_bufferMB = static_cast<double>(m_buffer.approximateBytes()) / BytesPerMebibyte;
        Q_EMIT bufferMBChanged();
    }
    onMain(StatisticsInterval, [this] { updateBufferSize(); });
}

CaptureRequest Recorder::requestFromSettings() const
{
    const auto& settings = m_dependencies.settings;
    return {.displayID = settings.displayID(),
            .targetHeight = heightOf(settings.resolution()),
            .framesPerSecond = settings.fps(),
            .codec = settings.codec(),
            .bitrate = [fps = settings.fps(), quality = settings.quality(),
                        codec = settings.codec()](QSize size) { return bitrateFor(size, fps, quality, codec); },
            .capturesAudio = settings.captureAudio(),
            .showsCursor = settings.showCursor(),
            .capturesMicrophone = settings.captureMicrophone(),
            .microphoneID = settings.microphoneID()};
}

CaptureEvents Recorder::eventsOf(std::uint64_t session)
{
    return {
        .onStopped =
            [this, session](const QString& message) { onMainIn(session, [this, message] { screenStopped(message); }); },
        .onMicLevel =
            [this, session](float level) {
                onMainIn(session, [this, level] {
                    m_micLevel = level;
                    Q_EMIT micLevelChanged();
                });
            },
        .onMicWarning =
            [this, session](const std::optional<QString>& warning) {
                onMainIn(session, [this, warning] {
                    m_hasMicEvent = true;
                    publishMic(!warning, warning);
                });
            },
        .onSystemAudioWarning =
            [this, session](const std::optional<QString>& warning) {
                onMainIn(session, [this, warning] {
                    m_systemAudioWarning = warning;
                    Q_EMIT micChanged();
                });
            }};
}

void Recorder::publishMic(bool isActive, std::optional<QString> warning)
{
    m_isMicActive = isActive;
    m_micWarning = std::move(warning);
    Q_EMIT micChanged();
}

void Recorder::setState(const RecorderState& state)
{
    m_state = state;
    m_saves.setState(state.kind);
    Q_EMIT stateChanged();
}

void Recorder::onMain(HostDuration delay, Task task)
{
    m_dependencies.main.postAfter(delay, [self = QPointer(this), task = std::move(task)] {
        if (self) {
            task();
        }
    });
}

void Recorder::onMainIn(std::uint64_t session, Task task)
{
    onMain({}, [this, session, task = std::move(task)] {
        if (session == m_session) {
            task();
        }
    });
}

} // namespace quelto
