// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/applications/DesktopEntries.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSet>
#include <QStandardPaths>

#include <glib.h>

#include <memory>

namespace quelto {

namespace {

constexpr QStringView Suffix = u".desktop";

struct GlibDeleter {
    void operator()(GKeyFile* file) const noexcept { g_key_file_unref(file); }
    void operator()(char* text) const noexcept { g_free(text); }
};
using KeyFilePtr = std::unique_ptr<GKeyFile, GlibDeleter>;
using TextPtr = std::unique_ptr<char, GlibDeleter>;

QString textOf(GKeyFile* file, const char* key)
{
    const TextPtr text(g_key_file_get_string(file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr));
    return QString::fromUtf8(text.get());
}

QString localizedTextOf(GKeyFile* file, const char* key)
{
    const TextPtr text(g_key_file_get_locale_string(file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    return QString::fromUtf8(text.get());
}

bool isSame(const QString& one, const QString& other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

/// "gimp" for "org.gimp.gimp": programs with a reversed domain name often keep the short name for their windows.
QString shortId(const QString& id)
{
    return id.mid(id.lastIndexOf(u'.') + 1);
}

} // namespace

std::vector<DesktopEntries::File> DesktopEntries::installedFiles()
{
    std::vector<File> found;
    QSet<QString> seen;
    // The user's folder comes first: its entries hide those of the system with the same id.
    for (const auto& folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        QDirIterator files(folder, {u'*' + Suffix.toString()}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const auto path = files.next();
            auto id = QDir(folder).relativeFilePath(path).chopped(Suffix.size());
            id.replace(u'/', u'-');
            if (!seen.contains(id)) {
                seen.insert(id);
                found.push_back({.id = id, .path = path});
            }
        }
    }
    return found;
}

std::optional<DesktopEntries::Entry> DesktopEntries::tryRead(const File& file)
{
    // Not GDesktopAppInfo: it rejects an entry whose program is not in this process's PATH, and its own list of
    // applications does not notice changes in subfolders.
    const KeyFilePtr contents(g_key_file_new());
    if (!g_key_file_load_from_file(contents.get(), QFile::encodeName(file.path).constData(), G_KEY_FILE_NONE,
                                   nullptr)) {
        return std::nullopt;
    }
    Entry entry{.id = file.id,
                .name = localizedTextOf(contents.get(), G_KEY_FILE_DESKTOP_KEY_NAME).simplified(),
                .windowClass = textOf(contents.get(), G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS)};
    const bool isApplication =
        textOf(contents.get(), G_KEY_FILE_DESKTOP_KEY_TYPE) == QLatin1StringView(G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    const bool isHidden = g_key_file_get_boolean(contents.get(), G_KEY_FILE_DESKTOP_GROUP,
                                                 G_KEY_FILE_DESKTOP_KEY_HIDDEN, nullptr) != FALSE;
    return isApplication && !isHidden && !entry.name.isEmpty() ? std::optional(std::move(entry)) : std::nullopt;
}

void DesktopEntries::refresh()
{
    auto files = installedFiles();
    if (files == m_files) {
        return;
    }
    m_entries.clear();
    for (const File& file : files) {
        if (auto entry = tryRead(file)) {
            m_entries.push_back(std::move(*entry));
        }
    }
    m_files = std::move(files);
}

std::optional<QString> DesktopEntries::findName(const QStringList& windowNames)
{
    refresh();
    enum class Match { windowClass, id, shortId };
    const auto find = [&](const QString& name, Match match) {
        return std::ranges::find_if(m_entries, [&](const Entry& entry) {
            return isSame(match == Match::windowClass ? entry.windowClass
                              : match == Match::id    ? entry.id
                                                      : shortId(entry.id),
                          name);
        });
    };
    for (const Match match : {Match::windowClass, Match::id, Match::shortId}) {
        for (const auto& name : windowNames) {
            if (name.isEmpty()) {
                continue;
            }
            if (const auto found = find(name, match); found != m_entries.end()) {
                return found->name;
            }
        }
    }
    return std::nullopt;
}

} // namespace quelto
