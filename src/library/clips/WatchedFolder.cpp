// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/WatchedFolder.h"

#include "library/naming/ClipName.h"

#include <QFile>

#include <array>
#include <climits>

#include <sys/inotify.h>
#include <unistd.h>

namespace quelto {

namespace {

constexpr std::uint32_t Entries = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
// Not every write: a long copy is to be seen when it is done, not all the while.
constexpr std::uint32_t Contents = IN_CLOSE_WRITE | IN_ATTRIB;
constexpr std::uint32_t Gone = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT;
constexpr std::uint32_t Coming = Entries | IN_ATTRIB;

constexpr std::size_t RoomForEvents = 64 * 1024;

/// The kernel follows no more of them either.
constexpr int MostLinks = 40;

/// What a link points to; empty where there is none.
QByteArray linkAt(const QByteArray& path)
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
        watch(QFile::encodeName(path));
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
    , m_way(std::move(other.m_way))
{
}

WatchedFolder& WatchedFolder::operator=(WatchedFolder&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_folder, other.m_folder);
    m_way.swap(other.m_way);
    return *this;
}

void WatchedFolder::watch(const QByteArray& folder)
{
    // What changes on the way during the first look is seen by the second one, and later on by the watches of the
    // first.
    for (int look = 0; look < 2; ++look) {
        m_folder = addWatch(folder, Entries | Contents | Gone);
        int linksLeft = MostLinks;
        watchWayTo(folder, m_folder >= 0, linksLeft);
    }
}

void WatchedFolder::watchWayTo(const QByteArray& folder, bool isWatched, int& linksLeft)
{
    for (auto slash = folder.lastIndexOf('/'); slash >= 0;
         slash = slash == 0 ? -1 : folder.lastIndexOf('/', slash - 1)) {
        const auto above = slash == 0 ? QByteArrayLiteral("/") : folder.first(slash);
        const auto end = folder.indexOf('/', slash + 1);
        const auto upToHere = folder.first(end < 0 ? folder.size() : end);
        const auto link = linkAt(upToHere);
        // The nearest one that is there shows the next part of the path appear, one with a link shows the link change;
        // the others only have to stay.
        const int watched = addWatch(above, isWatched && link.isEmpty() ? Gone : Gone | Coming);
        if (watched >= 0) {
            m_way.insert(watched, upToHere.sliced(slash + 1));
            isWatched = true;
        }
        if (!link.isEmpty() && linksLeft-- > 0) {
            watchWayTo(link.startsWith('/') ? link : above + '/' + link, addWatch(upToHere, Gone) >= 0, linksLeft);
        }
    }
}

int WatchedFolder::addWatch(const QByteArray& path, std::uint32_t events) const
{
    return ::inotify_add_watch(m_descriptor, path.constData(), events | IN_ONLYDIR | IN_MASK_ADD);
}

FolderChanges WatchedFolder::takeChanges()
{
    FolderChanges news;
    alignas(inotify_event) std::array<char, RoomForEvents> events;
    for (;;) {
        const auto size = ::read(m_descriptor, events.data(), events.size());
        if (size <= 0) {
            return news;
        }
        for (std::ptrdiff_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
            add(*event, news);
            at += static_cast<std::ptrdiff_t>(sizeof *event + event->len);
        }
    }
}

void WatchedFolder::add(const inotify_event& event, FolderChanges& news) const
{
    const QByteArrayView name = event.len > 0 ? QByteArrayView(static_cast<const char*>(event.name)) : QByteArrayView();
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        // Whatever it was: the folder may have gone as well.
        news.hasNewEntries = true;
        news.isLost = true;
    } else if ((event.mask & Gone) != 0 || (!name.isEmpty() && m_way.contains(event.wd, name.toByteArray()))) {
        news.isLost = true;
    } else if (event.wd != m_folder) {
        return;
    } else if (name.isEmpty()) {
        // Of the folder itself: who may look into it.
        news.hasNewEntries |= (event.mask & IN_ATTRIB) != 0;
    } else if (isClipFileName(name)) {
        news.hasNewEntries |= (event.mask & Entries) != 0;
        news.hasNewContents |= (event.mask & Contents) != 0;
    }
}

} // namespace quelto
