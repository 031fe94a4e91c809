// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/ScreenGrabber.h"

#include "base/language/T.h"
#include "platform/PlatformError.h"

#include <poll.h>

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr int PoolSize = 8;
// A change of mode turns the display off and on again; longer than that is gone.
constexpr auto Deadline = 2s;
constexpr auto RetryInterval = 100ms;
// A pointer that a program sets, and no device moves, is not reported; so often its place is asked for.
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
    bool isPlain =
        formats.rem > 0 && formats.data->bits_per_pixel == 32 && setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == connection->screen->root_visual) {
                isPlain = isPlain && visuals.data->red_mask == 0xff0000 && visuals.data->blue_mask == 0xff;
            }
        }
    }
    if (!isPlain) {
        throw PlatformError(
            T("Ekranın renk biçimi desteklenmiyor. Ekranı 24 bit renk derinliğine ayarlayıp yeniden deneyin."));
    }
    return std::move(*connection);
}

QString vanishedText()
{
    return T("Kaydedilen ekran artık bağlı değil. Ekranı yeniden bağlayın ya da ayarlardan başka bir ekran seçin.");
}

QString unreadableText()
{
    return T("Ekran görüntüsü okunamıyor. Kaydı yeniden başlatın.");
}

timespec asTimespec(HostDuration duration)
{
    const auto positive = std::max(duration, HostDuration::zero()).count();
    return {.tv_sec = positive / 1'000'000'000, .tv_nsec = positive % 1'000'000'000};
}

} // namespace

ScreenGrabber::ScreenGrabber(const QString& displayName, const FrameRequest& request)
    : m_connection(openConnection(displayName))
    , m_request(request)
    , m_pool(request.outputSize, PoolSize)
    , m_clock(HostClock::now(), request.framesPerSecond)
    , m_screenEvents(m_connection, request.showsCursor)
    , m_lookedAt(HostTime::min())
{
    const auto area = findArea();
    if (!area) {
        throw PlatformError(vanishedText());
    }
    useArea(*area);
}

void ScreenGrabber::run(const FrameEvents& events, int stopDescriptor) noexcept
{
    m_clock = FramePacer(HostClock::now(), m_request.framesPerSecond);
    try {
        while (step(events, stopDescriptor) == Step::goOn) { }
    } catch (const std::exception& error) {
        qWarning("screen: %s", error.what());
        events.onStopped(unreadableText());
    }
}

ScreenGrabber::Step ScreenGrabber::step(const FrameEvents& events, int stopDescriptor)
{
    readChanges();
    if (m_isLayoutNew) {
        followLayout();
    }
    if (const auto reason = endingReason()) {
        events.onStopped(*reason);
        return Step::stop;
    }
    if (m_isMissing) {
        m_isLayoutNew = true;
        return waitForChange(stopDescriptor, RetryInterval);
    }
    if (!m_pendingSince) {
        return waitForChanges(stopDescriptor);
    }
    const auto due = m_clock.slotAfter(m_lookedAt);
    if (HostClock::now() < due) {
        return waitUntil(due, stopDescriptor);
    }
    takeFrame(events);
    return hasStopped(stopDescriptor) ? Step::stop : Step::goOn;
}

void ScreenGrabber::readChanges()
{
    const auto news = m_screenEvents.read();
    if (news.hasDamage || news.pointerMoved || news.shapeChanged) {
        notePending();
    }
    m_isShapeNew = m_isShapeNew || news.shapeChanged;
    m_isLayoutNew = m_isLayoutNew || news.layoutChanged;
}

std::optional<QString> ScreenGrabber::endingReason() const
{
    if (xcb_connection_has_error(m_connection.get()) != 0) {
        return T("Ekrana bağlantı koptu. Masaüstü oturumunuzun açık olduğunu denetleyip kaydı yeniden başlatın.");
    }
    if (m_failingSince && HostClock::now() - *m_failingSince > Deadline) {
        return m_isMissing ? vanishedText() : unreadableText();
    }
    return std::nullopt;
}

void ScreenGrabber::followLayout()
{
    m_isLayoutNew = false;
    const auto area = findArea();
    const bool wasMissing = std::exchange(m_isMissing, !area);
    if (!area) {
        noteFailure();
    } else if (wasMissing || *area != m_image->area()) {
        m_failingSince.reset();
        useArea(*area);
    }
    // The questions may have brought in events that no descriptor tells of any more.
    readChanges();
}

std::optional<QRect> ScreenGrabber::findArea() const
{
    for (const auto& monitor : monitorsOf(m_connection)) {
        if (monitor.info.id == m_request.displayID) {
            return monitor.area;
        }
    }
    return std::nullopt;
}

void ScreenGrabber::useArea(const QRect& area)
{
    m_image.reset();
    m_image.emplace(m_connection, area);
    m_screenEvents.setArea(area);
    m_staleRows = m_image->allRows();
    notePending();
}

void ScreenGrabber::notePending()
{
    if (!m_pendingSince) {
        m_pendingSince = HostClock::now();
    }
}

void ScreenGrabber::noteFailure()
{
    if (!m_failingSince) {
        m_failingSince = HostClock::now();
    }
}

void ScreenGrabber::takeFrame(const FrameEvents& events)
{
    m_lookedAt = HostClock::now();
    const auto frame = m_pool.tryAcquire();
    if (!frame) {
        // Nothing has been asked of the server yet, so it keeps the changes for the next try, which shows a later
        // picture.
        m_pendingSince = HostClock::now();
        return;
    }
    auto changes =
        m_screenEvents.take(m_isShapeNew ? ScreenEvents::ShapeRequest::wanted : ScreenEvents::ShapeRequest::none);
    m_staleRows = m_staleRows.united(changes.rows);
    const bool hasNewShape = changes.shape.has_value();
    if (changes.shape) {
        m_cursor.setShape(std::move(*changes.shape));
        m_isShapeNew = false;
    }
    const auto area = m_image->area();
    const auto pointer = changes.pointer.value_or(QPoint()) - area.topLeft();
    const auto shown = changes.pointer ? m_cursor.covered(pointer, area.size()) : QRect();
    const bool isPointerNew = shown != m_shownPointer || (hasNewShape && !shown.isEmpty());
    if (m_staleRows.isEmpty() && !isPointerNew) {
        m_pendingSince.reset();
        return;
    }

    frame->presentationTime = *m_pendingSince;
    if (!m_staleRows.isEmpty() && !m_image->read(m_staleRows)) {
        noteFailure();
        m_isLayoutNew = true;
        m_pendingSince = HostClock::now();
        return;
    }
    m_staleRows = {};
    m_failingSince.reset();
    m_pendingSince.reset();
    m_shownPointer = shown;
    if (shown.isEmpty()) {
        m_converter.convert(m_image->picture(), *frame);
    } else {
        m_cursor.draw(m_image->pixels(), m_image->stride(), area.size(), pointer);
        m_converter.convert(m_image->picture(), *frame);
        m_cursor.erase(m_image->pixels(), m_image->stride());
    }
    events.onFrame(frame);
}

ScreenGrabber::Step ScreenGrabber::waitForChanges(int stopDescriptor)
{
    if (!m_request.showsCursor) {
        return waitForChange(stopDescriptor, std::nullopt);
    }
    const auto interval = m_screenEvents.reportsMotion() ? UnreportedMotionInterval
                                                         : HostDuration(1s) / std::max(1, m_request.framesPerSecond);
    const auto result = waitForChange(stopDescriptor, interval);
    notePending();
    return result;
}

ScreenGrabber::Step ScreenGrabber::waitForChange(int stopDescriptor, std::optional<HostDuration> atMost)
{
    pollfd descriptors[] = {{.fd = stopDescriptor, .events = POLLIN},
                            {.fd = xcb_get_file_descriptor(m_connection.get()), .events = POLLIN}};
    const auto timeout = asTimespec(atMost.value_or(HostDuration::zero()));
    ppoll(descriptors, std::size(descriptors), atMost ? &timeout : nullptr, nullptr);
    return descriptors[0].revents != 0 ? Step::stop : Step::goOn;
}

ScreenGrabber::Step ScreenGrabber::waitUntil(HostTime time, int stopDescriptor)
{
    pollfd descriptor{.fd = stopDescriptor, .events = POLLIN};
    const auto timeout = asTimespec(time - HostClock::now());
    ppoll(&descriptor, 1, &timeout, nullptr);
    return descriptor.revents != 0 ? Step::stop : Step::goOn;
}

bool ScreenGrabber::hasStopped(int stopDescriptor)
{
    pollfd descriptor{.fd = stopDescriptor, .events = POLLIN};
    return poll(&descriptor, 1, 0) > 0;
}

} // namespace quelto
