// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ScreenReader.h"

#include <QQuickItem>

namespace quelto {

void ScreenReader::announceFocus(QQuickItem* item)
{
    if (item != nullptr) {
        QAccessibleEvent event(item, QAccessible::Focus);
        m_send(&event);
    }
}

} // namespace quelto
