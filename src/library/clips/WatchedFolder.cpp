// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/WatchedFolder.h"

#include "base/files/FileName.h"
#include "library/naming/ClipName.h"

#include <array>
#include <climits>

#include <sys/inotify.h>
#include <unistd.h>

namespace quelto {

namespace {

constexpr std::uint32_t EntryEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
// Without IN_MODIFY: a long copy is reported once it is complete, not after every write.
constexpr std::uint32_t ContentEvents = IN_CLOSE_WRITE | IN_ATTRIB;
constexpr std::uint32_t RemovalEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT;
constexpr std::uint32_t ArrivalEvents = EntryEvents | IN_ATTRIB;

constexpr std::size_t EventBufferSize = 64 * 1024;

/// The kernel's own limit.
constexpr int MaxLinks = 40;

/// The target of a symbolic link; empty if the path is not a link.
QByteArray linkTarget(const QByteArray& path)
{
    std::array<char, PATH_MAX> target{};
    const auto size = ::readlink(path.constData(), target.data(), target.size());
    return size > 0 ? QByteArray(target.data(), size) : QByteArray();
}

} // namespace

WatchedFolder::WatchedFolder(const QString& path)
    : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (m_descriptor >= 0) {
        watch(encodeFileName(path));
    }
}

WatchedFolder::~WatchedFolder()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

WatchedFolder::WatchedFolder(WatchedFolder&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_folder(other.m_folder)
    , m_parents(std::move(other.m_parents))
{
}

WatchedFolder& WatchedFolder::operator=(WatchedFolder&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_folder, other.m_folder);
    m_parents.swap(other.m_parents);
    return *this;
}

void WatchedFolder::watch(const QByteArray& folder)
{
    // The second pass covers path changes during the first one; the watches of the first pass report later changes.
    for (int pass = 0; pass < 2; ++pass) {
        m_folder = addWatch(folder, EntryEvents | ContentEvents | RemovalEvents);
        int linksLeft = MaxLinks;
        watchPathTo(folder, m_folder >= 0, linksLeft);
    }
}

void WatchedFolder::watchPathTo(const QByteArray& folder, bool isWatched, int& linksLeft)
{
    for (auto slash = folder.lastIndexOf('/'); slash >= 0;
         slash = slash == 0 ? -1 : folder.lastIndexOf('/', slash - 1)) {
        const auto parent = slash == 0 ? QByteArrayLiteral("/") : folder.first(slash);
        const auto end = folder.indexOf('/', slash + 1);
        const auto child = folder.first(end < 0 ? folder.size() : end);
        const auto link = linkTarget(child);
        // The nearest existing parent reports when the next path component appears, and the parent of a link reports
        // when the link changes. The other parents only report their own removal.
        const int watched =
            addWatch(parent, isWatched && link.isEmpty() ? RemovalEvents : RemovalEvents | ArrivalEvents);
        if (watched >= 0) {
            m_parents.insert(watched, child.sliced(slash + 1));
            isWatched = true;
        }
        if (!link.isEmpty() && linksLeft-- > 0) {
            watchPathTo(link.startsWith('/') ? link : parent + '/' + link, addWatch(child, RemovalEvents) >= 0,
                        linksLeft);
        }
    }
}

int WatchedFolder::addWatch(const QByteArray& path, std::uint32_t events) const
{
    return ::inotify_add_watch(m_descriptor, path.constData(), events | IN_ONLYDIR | IN_MASK_ADD);
}

FolderChanges WatchedFolder::takeChanges()
{
    FolderChanges changes;
    alignas(inotify_event) std::array<char, EventBufferSize> events;
    for (;;) {
        const auto size = ::read(m_descriptor, events.data(), events.size());
        if (size <= 0) {
            return changes;
        }
        for (std::ptrdiff_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
            add(*event, changes);
            at += static_cast<std::ptrdiff_t>(sizeof *event + event->len);
        }
    }
}

void WatchedFolder::add(const inotify_event& event, FolderChanges& changes) const
{
    const QByteArrayView name = event.len > 0 ? QByteArrayView(static_cast<const char*>(event.name)) : QByteArrayView();
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        // Events were dropped; the removal of the folder may be among them.
        changes.hasNewEntries = true;
        changes.isLost = true;
    } else if ((event.mask & RemovalEvents) != 0 ||
               (!name.isEmpty() && m_parents.contains(event.wd, name.toByteArray()))) {
        changes.isLost = true;
    } else if (event.wd != m_folder) {
        return;
    } else if (name.isEmpty()) {
        // The folder's own permissions changed.
        changes.hasNewEntries |= (event.mask & IN_ATTRIB) != 0;
    } else if (isClipFileName(name)) {
        changes.hasNewEntries |= (event.mask & EntryEvents) != 0;
        changes.hasNewContents |= (event.mask & ContentEvents) != 0;
    }
}

} // namespace quelto
