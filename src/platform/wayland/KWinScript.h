// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/applications/WindowIdentity.h"

#include <QByteArray>
#include <QString>

namespace quelto::kwin {

/// The object that the script calls, with one text for each report.
inline const QString ReportPath = QStringLiteral("/app/quelto/ActiveWindow");
inline const QString ReportInterface = QStringLiteral("app.quelto.ActiveWindow");

/// A script for KWin 5.27 and 6 that reports the active window: at once when another window becomes active, and at most
/// twice a second while its title changes. receiver: the unique bus name to which it reports.
QByteArray activeWindowScript(const QString& receiver);

/// The window in a report of the script. Nothing if no window is active, or if the text is no report.
std::optional<WindowIdentity> readReport(const QString& report);

} // namespace quelto::kwin
