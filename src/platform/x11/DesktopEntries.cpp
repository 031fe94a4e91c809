// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/DesktopEntries.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSet>
#include <QStandardPaths>

namespace quelto {

namespace {

bool isSame(const QString& one, const QString& other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

/// "gimp" for "org.gimp.gimp": programs with a reversed domain name often keep the short name for their windows.
QString shortID(const QString& id)
{
    return id.mid(id.lastIndexOf(u'.') + 1);
}

/// Escaped white space counts as a space: a name goes on one line.
QString unescaped(const QByteArray& value)
{
    QByteArray text;
    for (qsizetype index = 0; index < value.size(); ++index) {
        if (value[index] == '\\' && index + 1 < value.size()) {
            ++index;
            text.append(value[index] == '\\' ? '\\' : ' ');
        } else {
            text.append(value[index]);
        }
    }
    return QString::fromUtf8(text);
}

/// The entries' files, the user's own first: they hide what the system has under the same name.
std::vector<DesktopEntryFile> installedFiles()
{
    std::vector<DesktopEntryFile> found;
    QSet<QString> seen;
    for (const auto& folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        QDirIterator files(folder, {QStringLiteral("*.desktop")}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const auto path = files.next();
            auto id = QDir(folder).relativeFilePath(path).chopped(int(std::size(".desktop")) - 1);
            id.replace(u'/', u'-');
            if (!seen.contains(id)) {
                seen.insert(id);
                found.push_back({.id = id, .path = path});
            }
        }
    }
    return found;
}

std::vector<DesktopEntry> entriesIn(const std::vector<DesktopEntryFile>& files)
{
    const auto languages = desktopEntryLanguages();
    std::vector<DesktopEntry> entries;
    for (const auto& [id, path] : files) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        if (auto entry = parseDesktopEntry(id, file.readAll(), languages)) {
            entries.push_back(std::move(*entry));
        }
    }
    return entries;
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(const QString& id, const QByteArray& contents,
                                              const QStringList& languages)
{
    DesktopEntry entry{.id = id};
    bool isApplication = false;
    bool isHidden = false;
    bool isInGroup = false;
    auto bestLanguage = languages.size() + 1;
    for (const auto& rawLine : contents.split('\n')) {
        const auto line = rawLine.trimmed();
        if (line.startsWith('[')) {
            isInGroup = line == "[Desktop Entry]";
        }
        const auto separator = line.indexOf('=');
        if (!isInGroup || separator < 0 || line.startsWith('#')) {
            continue;
        }
        const auto key = line.first(separator).trimmed();
        const auto value = line.sliced(separator + 1).trimmed();
        if (key == "Type") {
            isApplication = value == "Application";
        } else if (key == "Hidden") {
            isHidden = value == "true";
        } else if (key == "StartupWMClass") {
            entry.windowClass = unescaped(value);
        } else if (key == "Name" && bestLanguage > languages.size()) {
            bestLanguage = languages.size();
            entry.name = unescaped(value);
        } else if (key.startsWith("Name[") && key.endsWith(']')) {
            const auto language = languages.indexOf(QString::fromUtf8(key.sliced(5).chopped(1)));
            if (language >= 0 && language < bestLanguage) {
                bestLanguage = language;
                entry.name = unescaped(value);
            }
        }
    }
    return isApplication && !isHidden && !entry.name.isEmpty() ? std::optional(entry) : std::nullopt;
}

QStringList desktopEntryLanguages()
{
    QString locale;
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = qEnvironmentVariable(variable);
        if (!locale.isEmpty()) {
            break;
        }
    }
    QString modifier;
    if (const auto at = locale.indexOf(u'@'); at >= 0) {
        modifier = locale.sliced(at);
        locale.truncate(at);
    }
    locale = locale.section(u'.', 0, 0);
    const auto language = locale.section(u'_', 0, 0);
    QStringList result;
    for (const auto& candidate : {QString(locale + modifier), locale, QString(language + modifier), language}) {
        if (!candidate.isEmpty() && candidate != u"C" && candidate != u"POSIX" && !result.contains(candidate)) {
            result.append(candidate);
        }
    }
    return result;
}

void DesktopEntries::refresh()
{
    if (auto files = installedFiles(); files != m_files) {
        m_entries = entriesIn(files);
        m_files = std::move(files);
    }
}

std::optional<DesktopEntry> DesktopEntries::find(const QStringList& windowNames)
{
    refresh();
    const auto fits = [&](const QString& name, int kind) {
        return std::ranges::find_if(m_entries, [&](const DesktopEntry& entry) {
            return isSame(kind == 0 ? entry.windowClass : kind == 1 ? entry.id : shortID(entry.id), name);
        });
    };
    for (const int kind : {0, 1, 2}) {
        for (const auto& name : windowNames) {
            if (name.isEmpty()) {
                continue;
            }
            if (const auto found = fits(name, kind); found != m_entries.end()) {
                return *found;
            }
        }
    }
    return std::nullopt;
}

} // namespace quelto
