// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/applications/WindowIdentity.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <unistd.h>

namespace quelto {

namespace {

// Window classes and application ids, in lower case.
constexpr const char* FileManagers[] = {
    "caja",
    "cosmic-files",
    "dde-file-manager",
    "dolphin",
    "doublecmd",
    "io.elementary.files",
    "krusader",
    "nautilus",
    "nemo",
    "nemo-desktop",
    "org.gnome.nautilus",
    "org.kde.dolphin",
    "org.kde.krusader",
    "org.kde.plasmashell",
    "pantheon-files",
    "pcmanfm",
    "pcmanfm-qt",
    "peony",
    "peony-qt",
    "plasmashell",
    "rox",
    "spacefm",
    "thunar",
    "xfdesktop",
};
constexpr const char* OwnNames[] = {"app.quelto.quelto", "quelto"};

constexpr QStringView DesktopSuffix = u".desktop";
constexpr QStringView ExeSuffix = u".exe";
constexpr QStringView SteamPrefix = u"steam_app_";

template <std::size_t N> bool contains(const char* const (&table)[N], const QString& name)
{
    return std::ranges::any_of(
        table, [&](const char* entry) { return name.compare(QLatin1StringView(entry), Qt::CaseInsensitive) == 0; });
}

QString executableName(std::uint32_t processID)
{
    return processID == 0 ? QString()
                          : QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(processID))).fileName();
}

/// Windows programs have a number or a file name as window class, and their process is the compatibility layer.
bool isWindowsProgram(const WindowIdentity& identity)
{
    return identity.windowClass.startsWith(SteamPrefix, Qt::CaseInsensitive) ||
        identity.windowClass.endsWith(ExeSuffix, Qt::CaseInsensitive) ||
        identity.instance.endsWith(ExeSuffix, Qt::CaseInsensitive);
}

QString withoutExeSuffix(QString name)
{
    if (name.endsWith(ExeSuffix, Qt::CaseInsensitive)) {
        name.chop(ExeSuffix.size());
    }
    return name;
}

QString displayName(const WindowIdentity& identity, DesktopEntries& applications)
{
    QStringList names{identity.applicationID, identity.windowClass, identity.instance};
    const bool isWindows = isWindowsProgram(identity);
    // An application id says more than the program, which may be an interpreter.
    if (!isWindows && identity.applicationID.isEmpty()) {
        names.append(executableName(identity.processID));
    }
    if (const auto name = applications.findName(names)) {
        return *name;
    }
    const auto title = identity.title.simplified();
    for (const auto& candidate : isWindows ? QStringList{title, identity.windowClass, identity.instance}
                                           : QStringList{identity.windowClass, identity.instance, title}) {
        if (!candidate.isEmpty()) {
            return withoutExeSuffix(candidate);
        }
    }
    return {};
}

} // namespace

QString applicationIDFrom(const QString& desktopFile)
{
    return desktopFile.endsWith(DesktopSuffix) ? QFileInfo(desktopFile).completeBaseName() : desktopFile;
}

std::optional<FrontApplicationInfo> describeApplication(const WindowIdentity& identity, DesktopEntries& applications)
{
    FrontApplicationInfo info{
        .name = displayName(identity, applications),
        .isDesktop = identity.isDesktop || contains(FileManagers, identity.windowClass) ||
            contains(FileManagers, identity.instance),
        .isThisProgram =
            identity.processID == static_cast<std::uint32_t>(getpid()) || contains(OwnNames, identity.windowClass),
    };
    // The window was closed before it was read.
    if (info.name.isEmpty() && !info.isDesktop && !info.isThisProgram) {
        return std::nullopt;
    }
    return info;
}

} // namespace quelto
