// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11FrontApplication.h"

#include "base/time/HostClock.h"
#include "platform/x11/ActiveApplication.h"
#include "platform/x11/WindowProperties.h"

#include <system_error>

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace quelto {

namespace {

constexpr std::chrono::milliseconds FirstTimeout{500};
/// Some programs change their title many times a second.
constexpr std::chrono::milliseconds TitleInterval{500};

/// What changed since the application was read.
struct Changes {
    bool hasNewWindow = false;
    bool hasNewProperties = false;
};

void readEvents(const X11Connection& connection, xcb_atom_t activeWindow, Changes& changes)
{
    while (const auto event = XcbPtr<xcb_generic_event_t>(xcb_poll_for_event(connection.get()))) {
        // Other events are errors of windows that were closed, and moves.
        const auto type = event->response_type & 0x7f;
        if (type == XCB_PROPERTY_NOTIFY) {
            const auto* const change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            if (change->window != connection.root()) {
                changes.hasNewProperties = true;
            } else if (change->atom == activeWindow) {
                // Status bars and window managers change other properties of the root window all the time.
                changes.hasNewWindow = true;
            }
        } else if (type == XCB_DESTROY_NOTIFY) {
            changes.hasNewWindow = true;
        }
    }
}

void select(const X11Connection& connection, xcb_window_t window, std::uint32_t events)
{
    if (window != XCB_NONE) {
        xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &events);
    }
}

/// Waits for an event; at most for the timeout if it is not negative. False if the descriptor became readable.
bool wait(const X11Connection& connection, int stopDescriptor, std::chrono::milliseconds timeout)
{
    pollfd descriptors[] = {{.fd = stopDescriptor, .events = POLLIN, .revents = 0},
                            {.fd = xcb_get_file_descriptor(connection.get()), .events = POLLIN, .revents = 0}};
    poll(descriptors, std::size(descriptors), static_cast<int>(timeout.count()));
    return descriptors[0].revents == 0;
}

} // namespace

X11FrontApplication::X11FrontApplication(const QString& displayName)
    : m_stopDescriptor(eventfd(0, EFD_CLOEXEC))
{
    if (m_stopDescriptor < 0) {
        throw std::system_error(errno, std::system_category());
    }
    m_thread = std::thread([this, displayName] {
        pthread_setname_np(pthread_self(), "quelto.front");
        follow(displayName);
        // Without a server, or after its end, no application is known.
        publish(std::nullopt);
    });
}

X11FrontApplication::~X11FrontApplication()
{
    eventfd_write(m_stopDescriptor, 1);
    m_thread.join();
    close(m_stopDescriptor);
}

std::optional<FrontApplicationInfo> X11FrontApplication::current() const
{
    m_first.wait_for(FirstTimeout);
    const std::scoped_lock guard(m_lock);
    return m_current;
}

void X11FrontApplication::follow(const QString& displayName)
{
    const auto connection = X11Connection::tryOpen(displayName);
    if (!connection) {
        return;
    }
    const auto activeWindow = WindowProperties(*connection).atom("_NET_ACTIVE_WINDOW");
    DesktopEntries applications;
    select(*connection, connection->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_window_t window = XCB_NONE;
    Changes changes{.hasNewWindow = true};
    HostTime lastRead;
    std::chrono::milliseconds timeout;
    do {
        readEvents(*connection, activeWindow, changes);
        const auto titleWait =
            std::chrono::ceil<std::chrono::milliseconds>(lastRead + TitleInterval - HostClock::now());
        timeout = changes.hasNewProperties ? std::max(titleWait, std::chrono::milliseconds(0))
                                           : std::chrono::milliseconds(-1);
        if (changes.hasNewWindow || timeout.count() == 0) {
            if (changes.hasNewWindow) {
                select(*connection, window, XCB_EVENT_MASK_NO_EVENT);
                window = findActiveWindow(*connection);
                select(*connection, window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
            }
            changes = {};
            publish(readApplication(*connection, window, applications));
            lastRead = HostClock::now();
            // The replies may have brought events, which would not wake a wait.
            timeout = std::chrono::milliseconds(0);
        }
        xcb_flush(connection->get());
    } while (xcb_connection_has_error(connection->get()) == 0 && wait(*connection, m_stopDescriptor, timeout));
}

void X11FrontApplication::publish(std::optional<FrontApplicationInfo> info)
{
    {
        const std::scoped_lock guard(m_lock);
        m_current = std::move(info);
    }
    std::call_once(m_firstPublished, [this] { m_firstPromise.set_value(); });
}

} // namespace quelto
