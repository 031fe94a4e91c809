// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalCapture.h"

#include "base/language/T.h"
#include "platform/PlatformError.h"
#include "platform/pipewire/video/DmaBufQuery.h"

namespace quelto {

namespace {

/// Off by default: it has not been tried with a graphics card yet.
std::vector<pipewire::DmaBufFormat> dmaBufFormats()
{
    return qEnvironmentVariableIntValue("QUELTO_DMABUF") == 1 ? pipewire::queryDmaBufFormats()
                                                              : std::vector<pipewire::DmaBufFormat>();
}

QString endedText()
{
    return T("Masaüstü ekran paylaşımını sonlandırdı. Kaydı yeniden başlatın.");
}

QString textOf(PortalEnd end)
{
    switch (end) {
    case PortalEnd::cancelled:
        return TOnDesktop(
            "Ekran kaydı izni yok. Sistem Ayarları › Gizlilik ve Güvenlik › Ekran ve Sistem Sesi Kaydı bölümünden "
            "Quelto'ye izin verip uygulamayı yeniden başlatın.");
    case PortalEnd::refused:
        return T("Masaüstünüz ekranı paylaşamıyor. Masaüstünüze uygun xdg-desktop-portal paketini kurup oturumu "
                 "yeniden açın.");
    default:
        return T("Masaüstü ekranı paylaşmıyor. xdg-desktop-portal ile PipeWire'ın çalıştığını denetleyip kaydı yeniden "
                 "başlatın.");
    }
}

} // namespace

PortalCapture::PortalCapture(std::shared_ptr<PortalConnection> portal, std::shared_ptr<PortalScreen> screen,
                             const PortalCaptureLimits& limits)
    : m_portal(std::move(portal))
    , m_screen(std::move(screen))
    , m_limits(limits)
{
    prepare(m_formatLimit, m_limits.format, [this] { sharingFailed(PortalEnd::timedOut); });
    prepare(m_firstFrameLimit, m_limits.firstFrame, [this] { firstFrameMissing(); });
    prepare(m_causeDelay, m_limits.sameEvent, [this] { findCause(); });
    prepare(m_retry, m_limits.retryInterval, [this] { share(); });
    prepare(m_recoveryLimit, m_limits.recovery, [this] { giveUp(textOf(PortalEnd::timedOut)); });
    connect(&m_displays, &DisplayWatch::changed, this, [this] { m_displaysChanged = HostClock::now(); });
}

PortalCapture::~PortalCapture()
{
    stop();
}

void PortalCapture::prepare(QTimer& timer, PortalCaptureLimits::Duration time, std::function<void()> onTimeout)
{
    timer.setSingleShot(true);
    timer.setInterval(time);
    timer.callOnTimeout(this, [this, onTimeout = std::move(onTimeout)] {
        if (isShared()) {
            onTimeout();
        }
    });
}

QSize PortalCapture::open(ScreenCastCursor cursor, const std::stop_token& cancelled)
{
    stop();
    Session session = 0;
    {
        const std::scoped_lock guard(m_streamLock);
        session = ++m_session;
    }
    m_answer.ask(session);
    QMetaObject::invokeMethod(
        this, [this, session, cursor] { begin(session, cursor); }, Qt::QueuedConnection);
    const auto answer = m_answer.wait(cancelled);
    if (answer && std::holds_alternative<QSize>(*answer)) {
        return std::get<QSize>(*answer);
    }
    // Closes the dialog.
    stop();
    throw PlatformError(answer ? std::get<QString>(*answer) : textOf(PortalEnd::cancelled));
}

void PortalCapture::start(const FrameSourceSettings& settings, FrameSourceEvents events)
{
    const std::scoped_lock guard(m_streamLock);
    if (m_problem) {
        throw PlatformError(*m_problem);
    }
    m_settings = settings;
    m_events = std::move(events);
    // Without a stream, the screen is being shared again at the moment.
    if (m_stream) {
        m_stream->start(settings.outputSize, settings.framesPerSecond);
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isShared()) {
                watchFirstFrame();
            }
        },
        Qt::QueuedConnection);
}

void PortalCapture::stop() noexcept
{
    {
        const std::scoped_lock guard(m_streamLock);
        ++m_session;
        m_settings.reset();
        m_problem.reset();
        m_stream.reset();
    }
    // Before begin() of the next session, because calls are made in order.
    QMetaObject::invokeMethod(
        this, [this] { endSession(); }, Qt::QueuedConnection);
}

bool PortalCapture::isShared() const
{
    const std::scoped_lock guard(m_streamLock);
    return m_sharing == m_session;
}

void PortalCapture::post(Attempt attempt, std::function<void()> function)
{
    QMetaObject::invokeMethod(
        this,
        [this, attempt, function = std::move(function)] {
            if (attempt == m_attempt && isShared()) {
                function();
            }
        },
        Qt::QueuedConnection);
}

void PortalCapture::begin(Session session, ScreenCastCursor cursor)
{
    m_sharing = session;
    m_cursor = cursor;
    m_reconnections = 0;
    if (isShared()) {
        m_phase = Phase::opening;
        share();
    }
}

void PortalCapture::share()
{
    // The earlier session ends first: a desktop may share a screen only once.
    endAttempt();
    m_cast = std::make_unique<PortalScreenCast>(
        m_portal,
        PortalScreenCast::Options{.token = m_screen->token(), .cursor = m_cursor, .timeLimit = m_limits.answer},
        PortalScreenCast::Events{.onStarted =
                                     [this](const ScreenCastStream& stream) {
                                         if (isShared()) {
                                             connectStream(stream);
                                         }
                                     },
                                 .onFailed =
                                     [this](PortalEnd end) {
                                         if (isShared()) {
                                             sharingFailed(end);
                                         }
                                     },
                                 .onClosed =
                                     [this] {
                                         if (isShared()) {
                                             m_wasClosed = true;
                                             interrupt();
                                         }
                                     }});
}

pipewire::VideoStreamEvents PortalCapture::streamEvents(Attempt attempt)
{
    return {.onFormat = [this, attempt](QSize size) { post(attempt, [this, size] { formatArrived(size); }); },
            .onFrame =
                [this, attempt, isFirst = true](VideoFramePtr frame) mutable {
                    if (std::exchange(isFirst, false)) {
                        post(attempt, [this] { frameArrived(); });
                    }
                    m_events.onFrame(std::move(frame));
                },
            .onEnded =
                [this, attempt](pipewire::StreamEnd reason) {
                    post(attempt, [this, reason] {
                        m_hasLostServer = reason == pipewire::StreamEnd::serverLost;
                        interrupt();
                    });
                }};
}

void PortalCapture::connectStream(const ScreenCastStream& stream)
{
    m_formatLimit.start();
    try {
        auto connected = std::make_unique<pipewire::VideoStream>(
            std::move(*stream.remote), stream.node.id, pipewire::VideoStreamOptions{.dmaBufFormats = dmaBufFormats()},
            streamEvents(m_attempt));
        const std::scoped_lock guard(m_streamLock);
        if (m_sharing != m_session) {
            return;
        }
        m_stream = std::move(connected);
        if (m_settings) {
            m_stream->start(m_settings->outputSize, m_settings->framesPerSecond);
        }
    } catch (const std::runtime_error& error) {
        qWarning("screen: %s", error.what());
        sharingFailed(PortalEnd::failed);
    }
}

void PortalCapture::formatArrived(QSize size)
{
    m_formatLimit.stop();
    m_screen->setSize(size);
    if (m_phase == Phase::opening || m_phase == Phase::recovering) {
        m_phase = Phase::running;
    }
    m_answer.answer(m_sharing, size);
    watchFirstFrame();
}

void PortalCapture::frameArrived()
{
    m_hasFrame = true;
    m_reconnections = 0;
    m_firstFrameLimit.stop();
    if (m_phase == Phase::running) {
        m_recoveryLimit.stop();
    }
}

void PortalCapture::watchFirstFrame()
{
    const std::scoped_lock guard(m_streamLock);
    if (!m_settings) {
        // Nobody wants frames yet.
        m_recoveryLimit.stop();
    } else if (m_phase == Phase::running && !m_hasFrame) {
        m_firstFrameLimit.start();
    }
}

/// A compositor sends a picture at once, also of a still screen, but may lose it. A still screen sends no other.
void PortalCapture::firstFrameMissing()
{
    // Without a token the desktop would ask the user.
    if (m_reconnections < m_limits.reconnections && !m_screen->token().load().isEmpty()) {
        ++m_reconnections;
        qWarning("screen: no picture has arrived, so the stream is connected again");
        recover();
    } else {
        qWarning("screen: the desktop sends no picture");
        m_recoveryLimit.stop();
    }
}

/// The end of the stream and that of its session come in any order.
void PortalCapture::interrupt()
{
    if (m_phase == Phase::opening || m_phase == Phase::recovering) {
        sharingFailed(PortalEnd::failed);
    } else if (m_phase == Phase::running) {
        m_phase = Phase::interrupted;
        m_interruptionTime = HostClock::now();
        m_firstFrameLimit.stop();
        m_causeDelay.start();
    }
}

void PortalCapture::findCause()
{
    // A desktop closes the session when the user stops the sharing, when a display changes, and when PipeWire ends.
    // Only after the first is it wrong to go on.
    if (m_wasClosed && !m_hasLostServer && m_displaysChanged < m_interruptionTime - 2 * m_limits.sameEvent) {
        giveUp(endedText());
    } else {
        recover();
    }
}

void PortalCapture::recover()
{
    m_phase = Phase::recovering;
    if (!m_recoveryLimit.isActive()) {
        m_recoveryLimit.start();
    }
    share();
}

void PortalCapture::sharingFailed(PortalEnd end)
{
    if (m_phase == Phase::recovering && end != PortalEnd::cancelled && end != PortalEnd::refused) {
        // What was restarted may not be ready yet. The limit of the recovery ends this.
        endAttempt();
        m_retry.start();
    } else {
        giveUp(textOf(end));
    }
}

void PortalCapture::giveUp(const QString& message)
{
    endSession();
    m_answer.answer(m_sharing, message);
    const std::scoped_lock guard(m_streamLock);
    if (m_sharing == m_session) {
        m_problem = message;
        if (m_settings) {
            m_events.onStopped(message);
        }
    }
}

void PortalCapture::endAttempt()
{
    ++m_attempt;
    m_wasClosed = false;
    m_hasLostServer = false;
    m_hasFrame = false;
    for (auto* const timer : {&m_formatLimit, &m_firstFrameLimit, &m_causeDelay, &m_retry}) {
        timer->stop();
    }
    m_cast.reset();
    const std::scoped_lock guard(m_streamLock);
    if (m_sharing == m_session) {
        m_stream.reset();
    }
}

void PortalCapture::endSession()
{
    endAttempt();
    m_recoveryLimit.stop();
    m_phase = Phase::idle;
}

} // namespace quelto
