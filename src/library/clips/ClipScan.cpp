// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/ClipScan.h"

#include "library/naming/ClipName.h"

#include <QFile>
#include <QHash>

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace quelto {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

Folder opened(const QString& path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return nullptr;
    }
    Folder folder(::fdopendir(descriptor));
    if (!folder) {
        ::close(descriptor);
    }
    return folder;
}

struct Entry {
    QString path;
    /// Nothing where the folder may be listed but not entered.
    std::optional<FileStat> facts;
};

std::optional<Entry> entryOf(int folder, const QString& prefix, const dirent& listed)
{
    if (!isClipFileName(listed.d_name)) {
        return std::nullopt;
    }
    const auto facts = factsOf(folder, listed.d_name);
    // Deleted since it was listed, or a link to nowhere.
    const bool isGone = !facts && errno != EACCES;
    if (isGone || (facts && !facts->isFile)) {
        return std::nullopt;
    }
    return Entry{.path = prefix + QFile::decodeName(listed.d_name), .facts = facts};
}

qint64 madeAt(const Entry& entry)
{
    // Without facts it is of this very moment.
    return entry.facts ? entry.facts->madeAt : std::numeric_limits<qint64>::max();
}

/// Clips of an earlier reading, by their paths.
class KnownClips {
public:
    explicit KnownClips(const ClipList& list)
        : m_list(list)
    {
        m_places.reserve(list.clips.size());
        for (qsizetype i = 0; i < list.clips.size(); ++i) {
            m_places.insert(list.clips[i].path, i);
        }
    }

    Clip clipOf(const Entry& entry) const
    {
        const auto place = m_places.value(entry.path, -1);
        // The language may have changed since.
        const bool isKnown = place >= 0 && entry.facts && entry.facts->madeAt == m_list.madeAt[place] &&
            entry.facts->size == m_list.clips[place].size && m_list.clips[place].hasOwnGame();
        return isKnown ? m_list.clips[place] : Clip(entry.path, entry.facts);
    }

private:
    const ClipList& m_list;
    QHash<QStringView, qsizetype> m_places;
};

} // namespace

ClipList clipsIn(const QString& folder, const ClipList& known)
{
    const auto directory = opened(folder);
    if (!directory) {
        return {};
    }
    const auto prefix = folder.endsWith(u'/') ? folder : folder + u'/';
    std::vector<Entry> entries;
    while (const auto* listed = ::readdir(directory.get())) {
        if (auto entry = entryOf(::dirfd(directory.get()), prefix, *listed)) {
            entries.push_back(std::move(*entry));
        }
    }
    std::ranges::stable_sort(entries, std::ranges::greater(), madeAt);
    const KnownClips knownClips(known);
    ClipList list;
    list.clips.reserve(static_cast<qsizetype>(entries.size()));
    list.madeAt.reserve(static_cast<qsizetype>(entries.size()));
    for (const auto& entry : entries) {
        list.clips.append(knownClips.clipOf(entry));
        list.madeAt.append(madeAt(entry));
    }
    return list;
}

} // namespace quelto
