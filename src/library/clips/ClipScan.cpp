// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/ClipScan.h"

#include "base/files/FileName.h"
#include "library/naming/ClipName.h"

#include <QHash>

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace quelto {

namespace {

struct DirectoryDeleter {
    void operator()(DIR* directory) const noexcept { ::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, DirectoryDeleter>;

Directory openDirectory(const QString& path)
{
    const int descriptor = ::open(encodeFileName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return nullptr;
    }
    Directory directory(::fdopendir(descriptor));
    if (!directory) {
        ::close(descriptor);
    }
    return directory;
}

struct Entry {
    QString path;
    /// Nothing in a folder that may be listed but not entered.
    std::optional<FileStat> stat;
};

std::optional<Entry> readEntry(int folder, const QString& prefix, const dirent& listed)
{
    if (!isClipFileName(listed.d_name)) {
        return std::nullopt;
    }
    const auto stat = tryFileStat(folder, listed.d_name);
    // Deleted since it was listed, or a dangling link.
    const bool isMissing = !stat && errno != EACCES;
    if (isMissing || (stat && !stat->isFile)) {
        return std::nullopt;
    }
    return Entry{.path = prefix + decodeFileName(listed.d_name), .stat = stat};
}

qint64 creationTime(const Entry& entry)
{
    // A file without attributes gets the current time, so it is the newest.
    return entry.stat ? entry.stat->createdAt : std::numeric_limits<qint64>::max();
}

/// Clips of an earlier scan, by path.
class PreviousClips {
public:
    explicit PreviousClips(const ClipList& list)
        : m_list(list)
    {
        m_indexes.reserve(list.clips.size());
        for (qsizetype i = 0; i < list.clips.size(); ++i) {
            m_indexes.insert(list.clips[i].path, i);
        }
    }

    Clip clipOf(const Entry& entry) const
    {
        const auto index = m_indexes.value(entry.path, -1);
        // Without a game of its own a clip depends on the language, which may have changed.
        const bool isUnchanged = index >= 0 && entry.stat && entry.stat->createdAt == m_list.creationTimes[index] &&
            entry.stat->size == m_list.clips[index].size && m_list.clips[index].hasOwnGame();
        return isUnchanged ? m_list.clips[index] : Clip(entry.path, entry.stat);
    }

private:
    const ClipList& m_list;
    QHash<QStringView, qsizetype> m_indexes;
};

} // namespace

ClipList scanClips(const QString& folder, const ClipList& previous)
{
    const auto directory = openDirectory(folder);
    if (!directory) {
        return {};
    }
    const auto prefix = folder.endsWith(u'/') ? folder : folder + u'/';
    std::vector<Entry> entries;
    while (const auto* listed = ::readdir(directory.get())) {
        if (auto entry = readEntry(::dirfd(directory.get()), prefix, *listed)) {
            entries.push_back(std::move(*entry));
        }
    }
    std::ranges::stable_sort(entries, std::ranges::greater(), creationTime);
    const PreviousClips previousClips(previous);
    ClipList list;
    list.clips.reserve(static_cast<qsizetype>(entries.size()));
    list.creationTimes.reserve(static_cast<qsizetype>(entries.size()));
    for (const auto& entry : entries) {
        list.clips.append(previousClips.clipOf(entry));
        list.creationTimes.append(creationTime(entry));
    }
    return list;
}

} // namespace quelto
