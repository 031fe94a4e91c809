// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayList>

#include <mpv/client.h>

#include <functional>
#include <mutex>

namespace quelto {

/// A core of libmpv that plays only what it is given: it reads no configuration of the user, runs no scripts, and opens
/// no playlists, subtitles or network addresses. It starts without a file, and draws nothing before a render context
/// exists.
///
/// All calls return at once. Thread: one at a time. Errors: std::runtime_error from the constructor.
class MpvHandle {
public:
    /// Calls the function on a thread of libmpv when there are events to take. It must not call libmpv.
    explicit MpvHandle(std::function<void()> onEvents);
    /// Ends the core on a thread of its own, because a file on a disk that hangs delays the end.
    ~MpvHandle();
    MpvHandle(const MpvHandle&) = delete;
    MpvHandle& operator=(const MpvHandle&) = delete;

    mpv_handle* get() const noexcept { return m_mpv; }

    /// Held while an output is connected: the core accepts one at a time.
    std::mutex& outputLock() { return m_outputLock; }

    /// No function is called any more when this returns.
    void disconnect();
    /// Whether a reply will come. A core that hangs does not take any number of commands.
    bool command(const QByteArrayList& arguments, std::uint64_t reply = 0);
    void set(const char* property, bool value);
    void set(const char* property, double value);
    /// Reports the present value first, and then each change, as an event with this number.
    void observe(const char* property, mpv_format format, std::uint64_t number);
    /// Reports the present value once, as a reply with this number.
    void get(const char* property, mpv_format format, std::uint64_t number);
    /// Hands all events that arrived to the function.
    void takeEvents(const std::function<void(const mpv_event&)>& onEvent);

private:
    mpv_handle* m_mpv;
    std::function<void()> m_onEvents;
    std::mutex m_outputLock;
};

} // namespace quelto
