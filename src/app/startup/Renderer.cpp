// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/Renderer.h"

#include <QDir>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace quelto {

bool hasGraphicsCard(const QString& devices)
{
    const QDir folder(devices);
    // QDir lists device files only as system files.
    constexpr auto Kind = QDir::System | QDir::Files;
    return !QDir(folder.filePath(QStringLiteral("dri"))).entryList({QStringLiteral("renderD*")}, Kind).isEmpty() ||
        !folder.entryList({QStringLiteral("nvidia[0-9]*")}, Kind).isEmpty();
}

void chooseRenderer()
{
    const auto isSet = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
    if (isSet("QT_QUICK_BACKEND") || isSet("QSG_RHI_BACKEND")) {
        return;
    }
    // Mesa's variable that forces rendering by the processor.
    if (isSet("LIBGL_ALWAYS_SOFTWARE") || !hasGraphicsCard(QStringLiteral("/dev"))) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
}

} // namespace quelto
