// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

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

/// The installed application that windows with one of these names (classes, application ids, program names, best first)
/// belong to. An entry that names the window class wins over one that is only called like it.
///
/// Thread: any; reads the applications folders.
std::optional<DesktopEntry> findDesktopEntry(const QStringList& windowNames);

} // namespace quelto
