// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaWatcher.h"

#include "moments/dota/DotaListener.h"

#include <QTimer>

namespace quelto {

namespace {

constexpr std::chrono::seconds TickPeriod{1};

} // namespace

DotaWatcher::DotaWatcher(const QString& homeFolder, quint16 port, QObject* parent)
    : MatchWatcher(QStringLiteral("quelto.dota"), parent)
    , m_config(homeFolder, port)
    , m_port(port)
{
}

DotaWatcher::~DotaWatcher()
{
    stopAndWait();
}

void DotaWatcher::refreshInstallState()
{
    postToQueue([this] { reply([this, state = m_config.installState()] { setInstallState(state); }); });
}

void DotaWatcher::install()
{
    if (m_isInstalling) {
        return;
    }
    m_isInstalling = true;
    Q_EMIT installationChanged();
    postToQueue([this] {
        const auto result = m_config.install();
        reply([this, result, state = m_config.installState()] {
            setInstallState(state);
            finishInstallation(result);
        });
    });
}

void DotaWatcher::finishInstallation(const DotaConfig::InstallResult& result)
{
    m_isInstalling = false;
    m_hasInstallFailed = result.failed > 0;
    Q_EMIT installationChanged();
    Q_EMIT installed(result.written, result.failed);
}

void DotaWatcher::open()
{
    updateConfig();
    if (!m_listener) {
        listen();
    }
    if (!m_timer) {
        m_timer = std::make_unique<QTimer>();
        QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] { tick(); });
    }
}

void DotaWatcher::close()
{
    m_listener.reset();
    m_timer.reset();
    m_match.reset();
}

void DotaWatcher::updateConfig()
{
    auto state = m_config.installState();
    if (state == InstallState::NotInstalled) {
        m_config.install();
        state = m_config.installState();
    }
    publish([this, state] { setInstallState(state); });
}

void DotaWatcher::listen()
{
    auto listener = std::make_unique<DotaListener>([this](const QByteArray& body) { processPost(body); });
    QString error;
    if (listener->listen(m_port)) {
        m_listener = std::move(listener);
    } else {
        error = listener->errorText();
    }
    publish([this, error] { setListenerError(error); });
}

void DotaWatcher::processPost(const QByteArray& body)
{
    if (const auto state = readDotaState(body)) {
        publishEvents(m_match.posted(*state, monotonicSeconds()));
        updateTimer();
    }
}

void DotaWatcher::tick()
{
    publishEvents(m_match.tick(monotonicSeconds()));
    updateTimer();
}

void DotaWatcher::updateTimer()
{
    // The timer runs only during a game, so that the queue stays idle otherwise.
    if (!m_match.needsTick()) {
        m_timer->stop();
    } else if (!m_timer->isActive()) {
        m_timer->start(TickPeriod);
    }
}

void DotaWatcher::setInstallState(InstallState state)
{
    // No folder is left that could not be written.
    if (state != InstallState::NotInstalled && std::exchange(m_hasInstallFailed, false)) {
        Q_EMIT installationChanged();
    }
    if (std::exchange(m_installState, state) != state) {
        Q_EMIT installStateChanged();
    }
}

void DotaWatcher::setListenerError(const QString& text)
{
    if (std::exchange(m_listenerError, text) != text) {
        Q_EMIT listenerErrorChanged();
    }
}

} // namespace quelto
