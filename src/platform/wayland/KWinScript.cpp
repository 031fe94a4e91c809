// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/KWinScript.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace quelto::kwin {

namespace {

/// A longer report is not the script's: no window has such a title.
constexpr qsizetype MaxReportLength = 64 * 1024;

// One text as the only argument: the type that KWin gives a number on the bus depends on its version.
constexpr const char* Script = R"js((function () {
    const changes = ["captionChanged", "desktopFileNameChanged", "windowClassChanged"];
    let active = null;
    let timer = null;

    function describe(window) {
        try {
            return JSON.stringify({
                title: String(window.caption),
                applicationID: String(window.desktopFileName || ""),
                windowClass: String(window.resourceClass || ""),
                processID: Number(window.pid) || 0,
                isDesktop: Boolean(window.desktopWindow)
            });
        } catch (error) {
            // There is no active window, or it was closed a moment ago.
            return "{}";
        }
    }

    function report() {
        callDBus("%1", "%2", "%3", "ActiveWindowChanged", describe(active));
    }

    function reportSoon() {
        if (!timer) {
            report();
        } else if (!timer.active) {
            timer.start();
        }
    }

    function follow(window) {
        for (const change of changes) {
            try {
                active[change].disconnect(reportSoon);
            } catch (error) {
                // The window was closed.
            }
        }
        active = window;
        for (const change of changes) {
            if (active && active[change]) {
                active[change].connect(reportSoon);
            }
        }
        report();
    }

    try {
        timer = new QTimer();
        timer.singleShot = true;
        timer.interval = 500;
        timer.timeout.connect(report);
    } catch (error) {
        timer = null;
    }
    // KWin 6 calls a window what was a client before.
    (workspace.windowActivated || workspace.clientActivated).connect(follow);
    follow(workspace.activeWindow !== undefined ? workspace.activeWindow : workspace.activeClient);
})();
)js";

} // namespace

QByteArray activeWindowScript(const QString& receiver)
{
    return QString::fromLatin1(Script).arg(receiver, ReportPath, ReportInterface).toUtf8();
}

std::optional<WindowIdentity> readReport(const QString& report)
{
    if (report.size() > MaxReportLength) {
        return std::nullopt;
    }
    const auto window = QJsonDocument::fromJson(report.toUtf8()).object();
    if (window.isEmpty()) {
        return std::nullopt;
    }
    const auto text = [&](QLatin1StringView key) { return window[key].toString(); };
    return WindowIdentity{
        .windowClass = text(QLatin1StringView("windowClass")),
        .title = text(QLatin1StringView("title")),
        .applicationID = applicationIDFrom(text(QLatin1StringView("applicationID"))),
        .processID = static_cast<std::uint32_t>(std::max(window[QLatin1StringView("processID")].toInt(), 0)),
        .isDesktop = window[QLatin1StringView("isDesktop")].toBool(),
    };
}

} // namespace quelto::kwin
