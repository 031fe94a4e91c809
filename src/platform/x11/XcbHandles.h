// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace quelto {

struct FreeMemory {
    void operator()(void* memory) const noexcept { std::free(memory); }
};

/// A reply, event or error from the server.
template <typename T> using XcbPtr = std::unique_ptr<T, FreeMemory>;

struct Disconnect {
    void operator()(xcb_connection_t* connection) const noexcept { xcb_disconnect(connection); }
};
using XcbConnectionPtr = std::unique_ptr<xcb_connection_t, Disconnect>;

/// Waits for the reply to a request. Null if the server reported an error, which does not reach the event queue.
template <typename Cookie, typename Reply>
XcbPtr<Reply> replyTo(Reply* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**), xcb_connection_t* connection,
                      Cookie cookie)
{
    xcb_generic_error_t* error = nullptr;
    XcbPtr<Reply> reply(fetch(connection, cookie, &error));
    const XcbPtr<xcb_generic_error_t> discarded(error);
    return reply;
}

// gcc 14 warns wrongly about m_id in a std::optional that is empty.
#pragma GCC diagnostic push
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

/// Owns a server object and destroys it with the request `Release`.
template <auto Release> class XcbResource {
public:
    XcbResource() = default;
    XcbResource(xcb_connection_t* connection, std::uint32_t id) noexcept
        : m_connection(connection)
        , m_id(id)
    {
    }
    XcbResource(XcbResource&& other) noexcept
        : m_connection(other.m_connection)
        , m_id(std::exchange(other.m_id, 0))
    {
    }
    XcbResource& operator=(XcbResource&& other) noexcept
    {
        std::swap(m_connection, other.m_connection);
        std::swap(m_id, other.m_id);
        return *this;
    }
    ~XcbResource()
    {
        if (m_id != 0) {
            Release(m_connection, m_id);
        }
    }

    std::uint32_t id() const noexcept { return m_id; }

private:
    xcb_connection_t* m_connection = nullptr;
    std::uint32_t m_id = 0;
};

#pragma GCC diagnostic pop

} // namespace quelto
