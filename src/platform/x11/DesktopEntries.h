// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace quelto {

/// What of a desktop entry names a program.
struct DesktopEntry {
    /// The file's name without its ending, folders joined by dashes.
    QString id;
    /// In the user's language.
    QString name;
    QString windowClass;
};

/// Nothing for an entry that is hidden or is no application. Languages as in "tr_TR", best first.
std::optional<DesktopEntry> parseDesktopEntry(const QString& id, const QByteArray& contents,
                                              const QStringList& languages);

/// The languages that the environment asks for, in the form of the keys of desktop entries.
QStringList desktopEntryLanguages();

struct DesktopEntryFile {
    QString id;
    QString path;

    bool operator==(const DesktopEntryFile&) const = default;
};

/// The installed applications. Their files are read at the first question, and again only when one was added or went:
/// a press of the key must not wait for hundreds of files.
///
/// Thread: one at a time.
class DesktopEntries {
public:
    /// The application that windows with one of these names (classes, application ids, program names, best first)
    /// belong to. An entry that names the window class wins over one that is only called like it.
    std::optional<DesktopEntry> find(const QStringList& windowNames);

private:
    void refresh();

    std::vector<DesktopEntry> m_entries;
    std::vector<DesktopEntryFile> m_files;
};

} // namespace quelto
