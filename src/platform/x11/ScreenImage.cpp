// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/ScreenImage.h"

#include <QScopeGuard>

#include <cstring>
#include <new>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quelto {

namespace {

constexpr std::uint32_t AllPlanes = ~0U;

/// Descriptors can only be passed to a server on this machine. Over any other socket the attempt closes the connection.
bool canPassDescriptors(xcb_connection_t* connection)
{
    sockaddr_storage address{};
    socklen_t length = sizeof(address);
    return getsockname(xcb_get_file_descriptor(connection), static_cast<sockaddr*>(static_cast<void*>(&address)),
                       &length) == 0 &&
        address.ss_family == AF_UNIX;
}

bool hasDescriptorSharing(xcb_connection_t* connection)
{
    if (!hasExtension(connection, xcb_shm_id) || !canPassDescriptors(connection)) {
        return false;
    }
    const auto version = replyTo(xcb_shm_query_version_reply, connection, xcb_shm_query_version(connection));
    return version && (version->major_version > 1 || version->minor_version >= 2);
}

} // namespace

RowRange RowRange::united(const RowRange& other) const noexcept
{
    if (isEmpty()) {
        return other;
    }
    if (other.isEmpty()) {
        return *this;
    }
    const int begin = std::min(first, other.first);
    return {.first = begin, .count = std::max(first + count, other.first + other.count) - begin};
}

ScreenImage::ScreenImage(const X11Connection& connection, const QRect& area)
    : m_connection(connection.get())
    , m_root(connection.root())
    , m_area(area)
{
    const auto size = static_cast<std::size_t>(stride()) * static_cast<std::size_t>(area.height());
    const int descriptor = memfd_create("quelto-screen", MFD_CLOEXEC);
    const auto closeDescriptor = qScopeGuard([descriptor] { close(descriptor); });
    if (descriptor < 0 || ftruncate(descriptor, static_cast<off_t>(size)) != 0) {
        throw std::bad_alloc();
    }
    auto* memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    m_memory = {static_cast<std::uint8_t*>(memory), UnmapMemory{size}};
    if (hasDescriptorSharing(m_connection)) {
        share(descriptor);
    }
}

void ScreenImage::share(int descriptor)
{
    const auto segment = xcb_generate_id(m_connection);
    // xcb closes the descriptor that it sends.
    const auto cookie = xcb_shm_attach_fd_checked(m_connection, segment, fcntl(descriptor, F_DUPFD_CLOEXEC, 0), 0);
    const XcbPtr<xcb_generic_error_t> error(xcb_request_check(m_connection, cookie));
    if (!error) {
        m_segment = {m_connection, segment};
    }
}

bool ScreenImage::read(const RowRange& rows)
{
    const auto x = static_cast<std::int16_t>(m_area.x());
    const auto y = static_cast<std::int16_t>(m_area.y() + rows.first);
    const auto width = static_cast<std::uint16_t>(m_area.width());
    const auto height = static_cast<std::uint16_t>(rows.count);
    const auto offset = static_cast<std::size_t>(rows.first) * static_cast<std::size_t>(stride());
    if (m_segment.id() != 0) {
        return replyTo(xcb_shm_get_image_reply, m_connection,
                       xcb_shm_get_image(m_connection, m_root, x, y, width, height, AllPlanes,
                                         XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment.id(),
                                         static_cast<std::uint32_t>(offset))) != nullptr;
    }
    const auto reply =
        replyTo(xcb_get_image_reply, m_connection,
                xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, x, y, width, height, AllPlanes));
    const auto bytes = static_cast<std::size_t>(stride()) * static_cast<std::size_t>(rows.count);
    if (!reply || static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < bytes) {
        return false;
    }
    std::memcpy(m_memory.get() + offset, xcb_get_image_data(reply.get()), bytes);
    return true;
}

} // namespace quelto
