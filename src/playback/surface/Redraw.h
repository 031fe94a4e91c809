// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaObject>
#include <QQuickItem>

#include <mutex>

namespace quelto {

/// Draws an item again from another thread, until the item is gone.
///
/// Thread: any.
class Redraw {
public:
    explicit Redraw(QQuickItem& item)
        : m_item(&item)
    {
    }

    void request()
    {
        const std::scoped_lock guard(m_lock);
        if (m_item != nullptr) {
            QMetaObject::invokeMethod(m_item, &QQuickItem::update, Qt::QueuedConnection);
        }
    }

    void end()
    {
        const std::scoped_lock guard(m_lock);
        m_item = nullptr;
    }

private:
    std::mutex m_lock;
    QQuickItem* m_item;
};

} // namespace quelto
