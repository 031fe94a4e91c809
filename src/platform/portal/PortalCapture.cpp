// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalCapture.h"

#include "base/language/T.h"
#include "platform/PlatformError.h"
#include "platform/pipewire/video/DmaBufQuery.h"

namespace quelto {

namespace {

using namespace std::chrono_literals;

/// From the start of a stream to its first format. A compositor needs a few milliseconds.
constexpr auto FormatLimit = 5s;
/// The end of a stream, the end of its session and a change of the displays belong together if they are this close.
constexpr auto SameEvent = 400ms;
constexpr auto RetryInterval = 250ms;
/// From an interruption on. A dialog that the desktop shows meanwhile is closed at the end.
constexpr auto RecoveryLimit = 10s;

/// Off by default: it could not be tried with enough graphics cards yet.
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

PortalCapture::PortalCapture(std::shared_ptr<PortalConnection> portal, std::shared_ptr<PortalScreen> screen)
    : m_portal(std::move(portal))
    , m_screen(std::move(screen))
{
    m_formatLimit.setSingleShot(true);
    m_formatLimit.callOnTimeout(this, [this] { sharingFailed(m_sharing, PortalEnd::timedOut); });
    m_retry.setSingleShot(true);
    m_retry.callOnTimeout(this, [this] { share(m_sharing); });
    connect(&m_displays, &DisplayWatch::changed, this, [this] { m_displaysChanged = HostClock::now(); });
}

PortalCapture::~PortalCapture()
{
    stop();
}

QSize PortalCapture::open(ScreenCastCursor cursor, const std::stop_token& cancelled)
{
    stop();
    Session session = 0;
    {
        const std::scoped_lock guard(m_streamLock);
        session = ++m_session;
        m_cursor = cursor;
    }
    std::unique_lock answer(m_answerLock);
    m_size.reset();
    m_problem.reset();
    QMetaObject::invokeMethod(
        this,
        [this, session] {
            m_phase = Phase::opening;
            share(session);
        },
        Qt::QueuedConnection);
    if (!m_answered.wait(answer, cancelled, [this] { return m_size || m_problem; })) {
        m_problem = textOf(PortalEnd::cancelled);
    }
    if (m_problem) {
        throw PlatformError(*m_problem);
    }
    return *m_size;
}

void PortalCapture::start(const FrameSourceSettings& settings, FrameSourceEvents events)
{
    const std::scoped_lock guard(m_streamLock);
    m_settings = settings;
    m_events = std::move(events);
    // Without a stream, the screen is being shared again at the moment.
    if (m_stream) {
        m_stream->start(settings.outputSize, settings.framesPerSecond);
    }
}

void PortalCapture::stop() noexcept
{
    Session session = 0;
    {
        const std::scoped_lock guard(m_streamLock);
        session = ++m_session;
        m_settings.reset();
        m_stream.reset();
    }
    QMetaObject::invokeMethod(
        this,
        [this, session] {
            if (isPresent(session)) {
                m_formatLimit.stop();
                m_cast.reset();
            }
        },
        Qt::QueuedConnection);
}

bool PortalCapture::isPresent(Session session) const
{
    const std::scoped_lock guard(m_streamLock);
    return session == m_session;
}

void PortalCapture::share(Session session)
{
    if (!isPresent(session)) {
        return;
    }
    m_sharing = session;
    m_wasClosed = false;
    m_hasLostServer = false;
    // The earlier session ends first: a desktop may share a screen only once.
    m_cast.reset();
    m_cast = std::make_unique<PortalScreenCast>(
        m_portal, PortalScreenCast::Options{.token = m_screen->token(), .cursor = m_cursor},
        PortalScreenCast::Events{
            .onStarted = [this, session](const ScreenCastStream& stream) { connectStream(session, stream); },
            .onFailed = [this, session](PortalEnd end) { sharingFailed(session, end); },
            .onClosed = [this, session] { sessionClosed(session); }});
}

void PortalCapture::connectStream(Session session, const ScreenCastStream& stream)
{
    m_formatLimit.start(FormatLimit);
    pipewire::VideoStreamEvents events{.onFormat = [this, session](QSize size) { setFormat(session, size); },
                                       .onFrame = [this](VideoFramePtr frame) { m_events.onFrame(std::move(frame)); },
                                       .onEnded =
                                           [this, session](pipewire::StreamEnd reason) {
                                               QMetaObject::invokeMethod(
                                                   this, [this, session, reason] { streamEnded(session, reason); },
                                                   Qt::QueuedConnection);
                                           }};
    try {
        auto connected = std::make_unique<pipewire::VideoStream>(
            std::move(*stream.remote), stream.node.id, pipewire::VideoStreamOptions{.dmaBufFormats = dmaBufFormats()},
            std::move(events));
        const std::scoped_lock guard(m_streamLock);
        if (session != m_session) {
            return;
        }
        m_stream = std::move(connected);
        if (m_settings) {
            m_stream->start(m_settings->outputSize, m_settings->framesPerSecond);
        }
    } catch (const PlatformError& error) {
        qWarning("screen: %s", error.what());
        sharingFailed(session, PortalEnd::failed);
    }
}

void PortalCapture::setFormat(Session session, QSize size)
{
    m_screen->setSize(size);
    QMetaObject::invokeMethod(
        this,
        [this, session] {
            if (isPresent(session)) {
                m_formatLimit.stop();
                m_phase = Phase::running;
            }
        },
        Qt::QueuedConnection);
    const std::scoped_lock guard(m_answerLock);
    m_size = size;
    m_answered.notify_all();
}

void PortalCapture::setProblem(const QString& message)
{
    const std::scoped_lock guard(m_answerLock);
    m_problem = message;
    m_answered.notify_all();
}

void PortalCapture::sessionClosed(Session session)
{
    if (isPresent(session)) {
        m_wasClosed = true;
        interrupt(session);
    }
}

void PortalCapture::streamEnded(Session session, pipewire::StreamEnd reason)
{
    if (isPresent(session)) {
        m_hasLostServer = reason == pipewire::StreamEnd::serverLost;
        interrupt(session);
    }
}

/// The end of the stream and that of its session come in any order.
void PortalCapture::interrupt(Session session)
{
    if (m_phase == Phase::opening || m_phase == Phase::recovering) {
        sharingFailed(session, PortalEnd::failed);
    } else if (m_phase == Phase::running) {
        m_phase = Phase::interrupted;
        m_interruptionTime = HostClock::now();
        QTimer::singleShot(SameEvent, this, [this, session] { recover(session); });
    }
}

void PortalCapture::recover(Session session)
{
    if (!isPresent(session)) {
        return;
    }
    // A desktop closes the session when the user stops the sharing, when a display changes, and when PipeWire ends.
    // Only after the first is it wrong to go on.
    if (m_wasClosed && !m_hasLostServer && m_displaysChanged < m_interruptionTime - 2 * SameEvent) {
        giveUp(session, endedText());
        return;
    }
    m_phase = Phase::recovering;
    {
        const std::scoped_lock guard(m_streamLock);
        m_stream.reset();
    }
    share(session);
    QTimer::singleShot(RecoveryLimit, this, [this, session, interruption = m_interruptionTime] {
        if (m_phase == Phase::recovering && m_interruptionTime == interruption) {
            giveUp(session, textOf(PortalEnd::timedOut));
        }
    });
}

void PortalCapture::sharingFailed(Session session, PortalEnd end)
{
    if (!isPresent(session)) {
        return;
    }
    m_formatLimit.stop();
    if (m_phase == Phase::recovering && end != PortalEnd::cancelled && end != PortalEnd::refused) {
        // What was restarted may not be ready yet. The limit of the recovery ends this.
        m_retry.start(RetryInterval);
    } else {
        giveUp(session, textOf(end));
    }
}

void PortalCapture::giveUp(Session session, const QString& message)
{
    if (!isPresent(session)) {
        return;
    }
    m_formatLimit.stop();
    m_cast.reset();
    setProblem(message);
    const std::scoped_lock guard(m_streamLock);
    if (session == m_session && m_settings) {
        // At most once: what else happens belongs to a past session.
        ++m_session;
        m_stream.reset();
        m_events.onStopped(message);
    }
}

} // namespace quelto
