// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/ClipScan.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace quelto {

namespace {

constexpr std::array<QByteArrayView, 3> VideoExtensions{"mp4", "mov", "m4v"};

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
    QString name;
    /// Nothing where the folder may be listed but not entered.
    std::optional<FileFacts> facts;
};

std::optional<Entry> entryOf(int folder, const dirent& listed)
{
    if (!isClipName(listed.d_name)) {
        return std::nullopt;
    }
    const auto facts = factsOf(folder, listed.d_name);
    // Deleted since it was listed, or a link to nowhere.
    const bool isGone = !facts && errno != EACCES;
    if (isGone || (facts && !facts->isFile)) {
        return std::nullopt;
    }
    return Entry{.name = QFile::decodeName(listed.d_name), .facts = facts};
}

qint64 age(const Entry& entry)
{
    // Without facts it is of this very moment.
    return entry.facts ? -entry.facts->madeAt : std::numeric_limits<qint64>::min();
}

} // namespace

bool isClipName(QByteArrayView fileName) noexcept
{
    const auto dot = fileName.lastIndexOf('.');
    if (dot <= 0 || fileName.front() == '.') {
        return false;
    }
    const auto extension = fileName.sliced(dot + 1);
    return std::ranges::any_of(VideoExtensions, [extension](QByteArrayView each) {
        return each.compare(extension, Qt::CaseInsensitive) == 0;
    });
}

QList<Clip> clipsIn(const QString& path)
{
    const auto folder = opened(path);
    if (!folder) {
        return {};
    }
    std::vector<Entry> entries;
    while (const auto* listed = ::readdir(folder.get())) {
        if (auto entry = entryOf(::dirfd(folder.get()), *listed)) {
            entries.push_back(std::move(*entry));
        }
    }
    std::ranges::stable_sort(entries, std::ranges::less(), age);
    const auto prefix = path.endsWith(u'/') ? path : path + u'/';
    QList<Clip> clips;
    clips.reserve(static_cast<qsizetype>(entries.size()));
    for (const auto& entry : entries) {
        clips.append(Clip(prefix + entry.name, entry.facts));
    }
    return clips;
}

} // namespace quelto
