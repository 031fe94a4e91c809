// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/recorder/Recorder.h"

#include "base/language/T.h"
#include "capture/clip/RecorderError.h"
#include "platform/PlatformError.h"

#include <QPointer>

namespace quelto {

namespace {

using std::chrono::milliseconds;

// Settings change in bursts, for example while a slider moves. The pipeline is rebuilt when they have been quiet this
// long.
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

Recorder::Recorder(const Dependencies& dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
    , m_saves({.settings = dependencies.settings,
               .buffer = m_buffer,
               .frontApplication = *dependencies.platform.frontApplication,
               .main = dependencies.main,
               .work = dependencies.saves,
               .clock = dependencies.clock,
               .write = dependencies.write})
    , m_pipeline(dependencies.platform, m_buffer, dependencies.openEncoder)
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
    m_sessionStop = {};
    m_systemAudioWarning.reset();
    publishMic(false, std::nullopt);
    // Here and not on the session queue: by the time that an encoder has opened, a newer window may be set.
    m_buffer.configure(bufferSeconds(m_dependencies.settings));
    m_dependencies.session.post([this, session, settings = CaptureSettings::of(m_dependencies.settings),
                                 events = eventsOf(session), cancelled = m_sessionStop.get_token()] {
        QString message;
        try {
            const auto report = m_pipeline.start(settings, events, cancelled);
            onMainIn(session, [this, report, settings] { captureStarted(report, settings); });
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

void Recorder::captureStarted(const CaptureReport& report, const CaptureSettings& settings)
{
    if (settings.captureSignature() != currentSignature()) {
        // A setting changed while the session was being built. Pending requests keep waiting.
        teardown([this] { buildSession(); });
        return;
    }
    m_runningSignature = settings.captureSignature();
    m_captureSummary = summaryOf(report);
    Q_EMIT captureSummaryChanged();
    setState({.kind = CaptureState::Recording});
}

void Recorder::captureFailed(const QString& message)
{
    endAudio();
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
    // The queue may be waiting for the user, who asked for something else now.
    m_sessionStop.request_stop();
    m_dependencies.session.post([this, session, then = std::move(then)] {
        m_pipeline.stop();
        onMainIn(session, [this, then] {
            m_runningSignature.reset();
            endAudio();
            then();
        });
    });
}

void Recorder::settingsChanged()
{
    m_buffer.configure(bufferSeconds(m_dependencies.settings));
    if (m_state.kind == CaptureState::Recording && m_runningSignature != currentSignature()) {
        restart();
    }
}

QString Recorder::currentSignature() const
{
    return CaptureSettings::of(m_dependencies.settings).captureSignature();
}

void Recorder::updateBufferSize()
{
    if (m_state.kind == CaptureState::Recording) {
        m_bufferMB = static_cast<double>(m_buffer.approximateBytes()) / BytesPerMebibyte;
        Q_EMIT bufferMBChanged();
    }
    onMain(StatisticsInterval, [this] { updateBufferSize(); });
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
                onMainIn(session, [this, warning] { publishMic(!warning, warning); });
            },
        .onSystemAudioWarning =
            [this, session](const std::optional<QString>& warning) {
                onMainIn(session, [this, warning] {
                    m_systemAudioWarning = warning;
                    Q_EMIT micChanged();
                });
            },
        .onChatApps = [this,
                       session](const QSet<QString>& apps) { onMainIn(session, [this, apps] { setChatApps(apps); }); }};
}

void Recorder::setChatApps(const QSet<QString>& apps)
{
    const bool wasActive = chatActive();
    m_chatApps = apps;
    if (chatActive() != wasActive) {
        Q_EMIT chatActiveChanged();
    }
}

void Recorder::publishMic(bool isActive, std::optional<QString> warning)
{
    m_isMicActive = isActive;
    m_micWarning = std::move(warning);
    Q_EMIT micChanged();
}

void Recorder::endAudio()
{
    m_systemAudioWarning.reset();
    m_micLevel = 0;
    Q_EMIT micLevelChanged();
    publishMic(false, m_micWarning);
    setChatApps({});
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
