// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/WatchedFolder.h"

#include "library/clips/ClipScan.h"

#include <QFile>

#include <array>

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
    , m_above(std::move(other.m_above))
{
}

WatchedFolder& WatchedFolder::operator=(WatchedFolder&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_folder, other.m_folder);
    m_above.swap(other.m_above);
    return *this;
}

void WatchedFolder::watch(const QByteArray& folder)
{
    const auto add = [this](const QByteArray& path, std::uint32_t events) {
        return ::inotify_add_watch(m_descriptor, path.constData(), events | IN_ONLYDIR | IN_MASK_ADD);
    };
    m_folder = add(folder, Entries | Contents | Gone);
    bool isWatched = m_folder >= 0;
    for (auto slash = folder.lastIndexOf('/'); slash >= 0;
         slash = slash == 0 ? -1 : folder.lastIndexOf('/', slash - 1)) {
        const auto above = slash == 0 ? QByteArrayLiteral("/") : folder.first(slash);
        // The nearest one that is there shows the next part of the path appear; the others only have to stay.
        const int watched = add(above, isWatched ? Gone : Gone | Coming);
        if (watched >= 0) {
            const auto end = folder.indexOf('/', slash + 1);
            m_above.insert(watched, folder.sliced(slash + 1, (end < 0 ? folder.size() : end) - slash - 1));
            isWatched = true;
        }
    }
}

FolderNews WatchedFolder::takeNews()
{
    FolderNews news;
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

void WatchedFolder::add(const inotify_event& event, FolderNews& news) const
{
    const QByteArrayView name = event.len > 0 ? QByteArrayView(static_cast<const char*>(event.name)) : QByteArrayView();
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        news.hasNewEntries = true;
    } else if ((event.mask & Gone) != 0) {
        news.isLost = true;
    } else if (event.wd != m_folder) {
        news.isLost |= !name.isEmpty() && m_above.value(event.wd) == name;
    } else if (name.isEmpty()) {
        // Of the folder itself: who may look into it.
        news.hasNewEntries |= (event.mask & IN_ATTRIB) != 0;
    } else if (isClipName(name)) {
        news.hasNewEntries |= (event.mask & Entries) != 0;
        news.hasNewContents |= (event.mask & Contents) != 0;
    }
}

} // namespace quelto
