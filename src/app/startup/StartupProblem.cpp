// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/StartupProblem.h"

#include "base/language/T.h"
#include "platform/factory/PlatformFactory.h"

#include <QGuiApplication>
#include <QMessageBox>

namespace quelto {

namespace {

bool hasScreen()
{
    const bool isGui = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
    return isGui &&
        !QStringList{QStringLiteral("offscreen"), QStringLiteral("minimal")}.contains(QGuiApplication::platformName());
}

} // namespace

StartupProblem startupProblem(const OutOfRangeSetting& setting)
{
    return {.title = T("Ayar dosyasında geçersiz bir değer var"),
            .text = T("“{0}” ayarının değeri {1}, ama 0 ile 4294967295 arasında olmalı. Quelto bu değerle çalışamaz ve "
                      "kapanacak. Şu dosyada değeri düzeltin veya satırını silin:",
                      setting.key, setting.value) +
                u'\n' + setting.file};
}

void show(const StartupProblem& problem)
{
    if (!hasScreen()) {
        notifyBeforeTheEnd({.id = QStringLiteral("startup"), .title = problem.title, .body = problem.text});
        return;
    }
    QMessageBox dialog(QMessageBox::Critical, QStringLiteral("Quelto"), problem.title);
    dialog.setInformativeText(problem.text);
    dialog.setTextFormat(Qt::PlainText);
    dialog.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    dialog.addButton(T("Kapat"), QMessageBox::RejectRole);
    dialog.exec();
}

} // namespace quelto
