// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/ActiveApplication.h"

#include "platform/x11/WindowProperties.h"

#include <QFileInfo>

#include <unistd.h>

namespace quelto {

namespace {

// Window classes, in lower case.
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
constexpr const char* OwnClasses[] = {"app.quelto.quelto", "quelto"};

template <std::size_t N> bool contains(const char* const (&table)[N], const QString& name)
{
    return std::ranges::any_of(
        table, [&](const char* entry) { return name.compare(QLatin1StringView(entry), Qt::CaseInsensitive) == 0; });
}

/// What a window's properties say about its application.
struct WindowIdentity {
    /// The two parts of WM_CLASS.
    QString instance;
    QString windowClass;
    QString title;
    QString applicationID;
    std::uint32_t processID = 0;
};

WindowIdentity readIdentity(const WindowProperties& properties, xcb_window_t window)
{
    WindowIdentity identity;
    const auto classes = properties.bytes(window, "WM_CLASS").split('\0');
    identity.instance = QString::fromUtf8(classes.value(0));
    identity.windowClass = QString::fromUtf8(classes.value(1));
    identity.title = QString::fromUtf8(properties.bytes(window, "_NET_WM_NAME"));
    if (identity.title.isEmpty()) {
        identity.title = QString::fromLatin1(properties.bytes(window, "WM_NAME"));
    }
    identity.applicationID = QString::fromUtf8(properties.bytes(window, "_GTK_APPLICATION_ID"));
    if (identity.applicationID.isEmpty()) {
        const auto file = QString::fromUtf8(properties.bytes(window, "_KDE_NET_WM_DESKTOP_FILE"));
        identity.applicationID = QFileInfo(file).completeBaseName() == file || !file.endsWith(u".desktop")
            ? file
            : QFileInfo(file).completeBaseName();
    }
    identity.processID = properties.values(window, "_NET_WM_PID").value(0);
    return identity;
}

QString executableName(std::uint32_t processID)
{
    return processID == 0 ? QString()
                          : QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(processID))).fileName();
}

constexpr QStringView ExeSuffix = u".exe";
constexpr QStringView SteamPrefix = u"steam_app_";

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
    if (!isWindows) {
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

bool isDesktopWindow(const WindowProperties& properties, xcb_window_t window, const WindowIdentity& identity)
{
    const auto desktop = properties.atom("_NET_WM_WINDOW_TYPE_DESKTOP");
    return (desktop != XCB_ATOM_NONE && properties.values(window, "_NET_WM_WINDOW_TYPE").contains(desktop)) ||
        contains(FileManagers, identity.windowClass) || contains(FileManagers, identity.instance);
}

} // namespace

xcb_window_t findActiveWindow(const X11Connection& connection)
{
    return WindowProperties(connection).values(connection.root(), "_NET_ACTIVE_WINDOW").value(0);
}

std::optional<FrontApplicationInfo> readApplication(const X11Connection& connection, xcb_window_t window,
                                                    DesktopEntries& applications)
{
    if (window == XCB_NONE) {
        return std::nullopt;
    }
    const WindowProperties properties(connection);
    const auto identity = readIdentity(properties, window);
    FrontApplicationInfo info{
        .name = displayName(identity, applications),
        .isDesktop = isDesktopWindow(properties, window, identity),
        .isThisProgram =
            identity.processID == static_cast<std::uint32_t>(getpid()) || contains(OwnClasses, identity.windowClass),
    };
    // The window was closed between the two requests.
    if (info.name.isEmpty() && !info.isDesktop && !info.isThisProgram) {
        return std::nullopt;
    }
    return info;
}

} // namespace quelto
