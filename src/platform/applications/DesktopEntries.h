// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace quelto {

/// The installed applications, as their desktop entries describe them.
///
/// Each lookup lists the names of the installed files. Their contents are read at the first lookup, and again only when
/// a file was added or removed, because a lookup follows each change of the active window.
///
/// Thread: one at a time; reads from disk.
class DesktopEntries {
public:
    /// The name, in the user's language, of the application that a window belongs to; nothing if no entry matches.
    ///
    /// Takes window classes, application ids and program names, best first. An entry that declares the window class
    /// wins over one that only has a matching file name.
    std::optional<QString> findName(const QStringList& windowNames);

private:
    struct File {
        /// The path below its applications folder without the suffix, with dashes in place of slashes.
        QString id;
        QString path;

        bool operator==(const File&) const = default;
    };
    struct Entry {
        QString id;
        QString name;
        QString windowClass;
    };

    static std::vector<File> installedFiles();
    static std::optional<Entry> tryRead(const File& file);
    void refresh();

    std::vector<File> m_files;
    std::vector<Entry> m_entries;
};

} // namespace quelto
