// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/WindowCommands.h"

#include <QCoreApplication>

namespace quelto {

WindowCommands::WindowCommands(Actions actions, QObject* parent)
    : QObject(parent)
    , m_actions(std::move(actions))
{
}

QString WindowCommands::version() const
{
    return QCoreApplication::applicationVersion();
}

void WindowCommands::edit(const QString& method, QObject* item)
{
    const auto signature = method.toLatin1() + "()";
    if (item != nullptr && item->metaObject()->indexOfMethod(signature.constData()) >= 0) {
        QMetaObject::invokeMethod(item, method.toLatin1().constData());
    }
}

} // namespace quelto
