// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/ImmediateDeletion.h"

#include <QCoreApplication>

namespace quelto {

void ImmediateDeletion::of(QObject* object)
{
    if (object != nullptr) {
        object->deleteLater();
        QCoreApplication::sendPostedEvents(object, QEvent::DeferredDelete);
    }
}

} // namespace quelto
