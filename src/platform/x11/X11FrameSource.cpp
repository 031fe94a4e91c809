// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11FrameSource.h"

#include "platform/x11/ScreenGrabber.h"

#include <csignal>
#include <system_error>

#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace quelto {

namespace {

/// A server that dies while a request is being sent must not end the process.
void blockBrokenPipe()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

} // namespace

X11FrameSource::X11FrameSource(QString displayName)
    : m_displayName(std::move(displayName))
{
}

X11FrameSource::~X11FrameSource()
{
    stop();
}

QSize X11FrameSource::open(const FrameSourceRequest& request, const std::stop_token& /*cancelled*/)
{
    stop();
    m_grabber = std::make_unique<ScreenGrabber>(m_displayName, request);
    return m_grabber->screenSize();
}

void X11FrameSource::start(const FrameSourceSettings& settings, FrameSourceEvents events)
{
    Q_ASSERT(m_grabber);
    m_stopDescriptor = eventfd(0, EFD_CLOEXEC);
    if (m_stopDescriptor < 0) {
        throw std::system_error(errno, std::system_category());
    }
    m_thread =
        std::thread([grabber = std::move(m_grabber), settings, events = std::move(events), stopped = m_stopDescriptor] {
            pthread_setname_np(pthread_self(), "quelto.screen");
            blockBrokenPipe();
            grabber->run(settings, events, stopped);
        });
}

void X11FrameSource::stop() noexcept
{
    m_grabber.reset();
    if (!m_thread.joinable()) {
        return;
    }
    eventfd_write(m_stopDescriptor, 1);
    m_thread.join();
    close(m_stopDescriptor);
}

} // namespace quelto
