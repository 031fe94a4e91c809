// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/ScreenGrabber.h"

#include "base/language/T.h"
#include "platform/PlatformError.h"

#include <poll.h>

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr int PoolSize = 8;
// A mode change turns the display off and on again. After this time it counts as disconnected.
constexpr auto FailureTimeout = 2s;
constexpr auto RetryInterval = 100ms;
// The server does not report pointer motion that a program causes, so the position is polled at this interval.
constexpr HostDuration UnreportedMotionInterval = 500ms;

X11Connection openConnection(const QString& displayName)
{
    auto connection = X11Connection::tryOpen(displayName);
    if (!connection) {
        throw PlatformError(
            T("Ekran sunucusuna bağlanılamadı. Quelto'yi masaüstü oturumunun içinden başlatmayı deneyin."));
    }
    const auto* setup = xcb_get_setup(connection->get());
    auto formats = xcb_setup_pixmap_formats_iterator(setup);
    while (formats.rem > 0 && formats.data->depth != connection->screen->root_depth) {
        xcb_format_next(&formats);
    }
    auto depths = xcb_screen_allowed_depths_iterator(connection->screen);
    bool isBgrx =
        formats.rem > 0 && formats.data->bits_per_pixel == 32 && setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == connection->screen->root_visual) {
                isBgrx = isBgrx && visuals.data->red_mask == 0xff0000 && visuals.data->blue_mask == 0xff;
            }
        }
    }
    if (!isBgrx) {
        throw PlatformError(
            T("Ekranın renk biçimi desteklenmiyor. Ekranı 24 bit renk derinliğine ayarlayıp yeniden deneyin."));
    }
    return std::move(*connection);
}

QString disconnectedText()
{
    return T("Kaydedilen ekran artık bağlı değil. Ekranı yeniden bağlayın ya da ayarlardan başka bir ekran seçin.");
}

QString unreadableText()
{
    return T("Ekran görüntüsü okunamıyor. Kaydı yeniden başlatın.");
}

timespec toTimespec(HostDuration duration)
{
    const auto positive = std::max(duration, HostDuration::zero()).count();
    return {.tv_sec = positive / 1'000'000'000, .tv_nsec = positive % 1'000'000'000};
}

} // namespace

ScreenGrabber::Output::Output(const FrameSourceSettings& settings)
    : pool(settings.outputSize, PoolSize)
    , pacer(HostClock::now(), settings.framesPerSecond)
    , frameDuration(HostDuration(1s) / std::max(1, settings.framesPerSecond))
{
}

ScreenGrabber::ScreenGrabber(const QString& displayName, const FrameSourceRequest& request)
    : m_connection(openConnection(displayName))
    , m_request(request)
    , m_screenEvents(m_connection, request.showsCursor)
    , m_lastAttempt(HostTime::min())
{
    const auto area = findArea();
    if (!area) {
        throw PlatformError(disconnectedText());
    }
    setArea(*area);
}

void ScreenGrabber::run(const FrameSourceSettings& settings, const FrameSourceEvents& events,
                        int stopDescriptor) noexcept
{
    try {
        m_output.emplace(settings);
        // The first frame shows the screen as it is now, not as it was when the display was opened.
        m_pendingSince = HostClock::now();
        while (step(events, stopDescriptor) == Step::proceed) { }
    } catch (const std::exception& error) {
        qWarning("screen: %s", error.what());
        events.onStopped(unreadableText());
    }
}

ScreenGrabber::Step ScreenGrabber::step(const FrameSourceEvents& events, int stopDescriptor)
{
    readChanges();
    if (m_hasNewLayout) {
        updateLayout();
    }
    if (const auto reason = stopReason()) {
        events.onStopped(*reason);
        return Step::stop;
    }
    if (m_isDisplayMissing) {
        m_hasNewLayout = true;
        return waitForChange(stopDescriptor, RetryInterval);
    }
    if (!m_pendingSince) {
        return waitWhileIdle(stopDescriptor);
    }
    const auto due = m_output->pacer.slotAfter(m_lastAttempt);
    if (HostClock::now() < due) {
        return waitUntil(due, stopDescriptor);
    }
    takeFrame(events);
    return hasStopped(stopDescriptor) ? Step::stop : Step::proceed;
}

void ScreenGrabber::readChanges()
{
    const auto changes = m_screenEvents.read();
    if (changes.hasDamage || changes.hasPointerMoved || changes.hasNewShape) {
        markPending();
    }
    m_hasNewShape = m_hasNewShape || changes.hasNewShape;
    m_hasNewLayout = m_hasNewLayout || changes.hasNewLayout;
}

std::optional<QString> ScreenGrabber::stopReason() const
{
    if (xcb_connection_has_error(m_connection.get()) != 0) {
        return T("Ekrana bağlantı koptu. Masaüstü oturumunuzun açık olduğunu denetleyip kaydı yeniden başlatın.");
    }
    if (m_failingSince && HostClock::now() - *m_failingSince > FailureTimeout) {
        return m_isDisplayMissing ? disconnectedText() : unreadableText();
    }
    return std::nullopt;
}

void ScreenGrabber::updateLayout()
{
    m_hasNewLayout = false;
    const auto area = findArea();
    const bool wasMissing = std::exchange(m_isDisplayMissing, !area);
    if (!area) {
        markFailing();
    } else if (wasMissing || *area != m_image->area()) {
        m_failingSince.reset();
        setArea(*area);
    }
    // The requests may have queued events, for which the descriptor does not become readable again.
    readChanges();
}

std::optional<QRect> ScreenGrabber::findArea() const
{
    for (const auto& monitor : readMonitors(m_connection)) {
        if (monitor.info.id == m_request.displayID) {
            return monitor.area;
        }
    }
    return std::nullopt;
}

void ScreenGrabber::setArea(const QRect& area)
{
    m_image.reset();
    m_image.emplace(m_connection, area);
    m_screenEvents.setArea(area);
    m_staleRows = m_image->allRows();
    markPending();
}

void ScreenGrabber::markPending()
{
    if (!m_pendingSince) {
        m_pendingSince = HostClock::now();
    }
}

void ScreenGrabber::markFailing()
{
    if (!m_failingSince) {
        m_failingSince = HostClock::now();
    }
}

void ScreenGrabber::takeFrame(const FrameSourceEvents& events)
{
    m_lastAttempt = HostClock::now();
    const auto frame = m_output->pool.tryAcquire();
    if (!frame) {
        // The server still holds the changes for the next attempt, whose frame shows a later state of the screen.
        m_pendingSince = HostClock::now();
        return;
    }
    auto update = m_screenEvents.fetchUpdate(m_hasNewShape ? ScreenEvents::ShapeRequest::wanted
                                                           : ScreenEvents::ShapeRequest::none);
    m_staleRows = m_staleRows.united(update.rows);
    const bool isShapeUpdated = update.cursorShape.has_value();
    if (update.cursorShape) {
        m_cursor.setShape(std::move(*update.cursorShape));
        m_hasNewShape = false;
    }
    const auto area = m_image->area();
    const auto pointer = update.pointerPosition.value_or(QPoint()) - area.topLeft();
    const auto shown = update.pointerPosition ? m_cursor.visibleArea(pointer, area.size()) : QRect();
    const bool hasCursorChanged = shown != m_shownCursor || (isShapeUpdated && !shown.isEmpty());
    if (m_staleRows.isEmpty() && !hasCursorChanged) {
        m_pendingSince.reset();
        return;
    }

    frame->presentationTime = *m_pendingSince;
    if (!m_staleRows.isEmpty() && !m_image->read(m_staleRows)) {
        markFailing();
        m_hasNewLayout = true;
        m_pendingSince = HostClock::now();
        return;
    }
    m_staleRows = {};
    m_failingSince.reset();
    m_pendingSince.reset();
    m_shownCursor = shown;
    if (shown.isEmpty()) {
        m_converter.convert(m_image->picture(), *frame);
    } else {
        m_cursor.draw(m_image->pixels(), m_image->stride(), area.size(), pointer);
        m_converter.convert(m_image->picture(), *frame);
        m_cursor.erase(m_image->pixels(), m_image->stride());
    }
    events.onFrame(frame);
}

ScreenGrabber::Step ScreenGrabber::waitWhileIdle(int stopDescriptor)
{
    if (!m_request.showsCursor) {
        return waitForChange(stopDescriptor, std::nullopt);
    }
    const auto interval = m_screenEvents.reportsMotion() ? UnreportedMotionInterval : m_output->frameDuration;
    const auto result = waitForChange(stopDescriptor, interval);
    markPending();
    return result;
}

ScreenGrabber::Step ScreenGrabber::waitForChange(int stopDescriptor, std::optional<HostDuration> atMost)
{
    pollfd descriptors[] = {{.fd = stopDescriptor, .events = POLLIN},
                            {.fd = xcb_get_file_descriptor(m_connection.get()), .events = POLLIN}};
    const auto timeout = toTimespec(atMost.value_or(HostDuration::zero()));
    ppoll(descriptors, std::size(descriptors), atMost ? &timeout : nullptr, nullptr);
    return descriptors[0].revents != 0 ? Step::stop : Step::proceed;
}

ScreenGrabber::Step ScreenGrabber::waitUntil(HostTime time, int stopDescriptor)
{
    pollfd descriptor{.fd = stopDescriptor, .events = POLLIN};
    const auto timeout = toTimespec(time - HostClock::now());
    ppoll(&descriptor, 1, &timeout, nullptr);
    return descriptor.revents != 0 ? Step::stop : Step::proceed;
}

bool ScreenGrabber::hasStopped(int stopDescriptor)
{
    pollfd descriptor{.fd = stopDescriptor, .events = POLLIN};
    return poll(&descriptor, 1, 0) > 0;
}

} // namespace quelto
