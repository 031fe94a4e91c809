// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/ToplevelFrontApplication.h"

#include "base/time/HostClock.h"

#include <system_error>

#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace quelto {

namespace {

constexpr std::chrono::seconds AnswerTimeout{2};
/// Some programs change their title many times a second.
constexpr std::chrono::milliseconds TitleInterval{500};

bool isTitleChange(const std::optional<WindowIdentity>& before, const std::optional<WindowIdentity>& now)
{
    return before && now && before->applicationID == now->applicationID;
}

} // namespace

std::unique_ptr<ToplevelFrontApplication> ToplevelFrontApplication::tryMake(const QString& displayName)
{
    auto connection = WaylandConnection::tryOpen(displayName);
    if (!connection || connection->roundTrip({.timeout = AnswerTimeout}) != WaylandConnection::Result::dispatched) {
        return nullptr;
    }
    auto windows = ToplevelList::tryMake(*connection);
    if (!windows) {
        return nullptr;
    }
    return std::unique_ptr<ToplevelFrontApplication>(
        new ToplevelFrontApplication(std::move(connection), std::move(windows)));
}

ToplevelFrontApplication::ToplevelFrontApplication(std::unique_ptr<WaylandConnection> connection,
                                                   std::unique_ptr<ToplevelList> windows)
    : m_connection(std::move(connection))
    , m_windows(std::move(windows))
    , m_stopDescriptor(eventfd(0, EFD_CLOEXEC))
{
    if (m_stopDescriptor < 0) {
        throw std::system_error(errno, std::system_category());
    }
    m_thread = std::thread([this] {
        pthread_setname_np(pthread_self(), "quelto.front");
        follow();
        // After the end of the compositor no application is known.
        m_current.set(std::nullopt);
    });
}

ToplevelFrontApplication::~ToplevelFrontApplication()
{
    eventfd_write(m_stopDescriptor, 1);
    m_thread.join();
    close(m_stopDescriptor);
}

void ToplevelFrontApplication::follow()
{
    DesktopEntries applications;
    std::optional<WindowIdentity> shown;
    HostTime lastChange;
    auto result = WaylandConnection::Result::dispatched;
    while (result == WaylandConnection::Result::dispatched || result == WaylandConnection::Result::timeout) {
        std::chrono::milliseconds timeout{-1};
        if (auto window = m_windows->active(); window != shown) {
            const auto now = HostClock::now();
            const auto wait = std::chrono::ceil<std::chrono::milliseconds>(lastChange + TitleInterval - now);
            if (isTitleChange(shown, window) && wait.count() > 0) {
                timeout = wait;
            } else {
                m_current.set(window ? describeApplication(*window, applications) : std::nullopt);
                shown = std::move(window);
                lastChange = now;
            }
        }
        result = m_connection->dispatch({.stopDescriptor = m_stopDescriptor, .timeout = timeout});
    }
}

} // namespace quelto
