// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaObject>
#include <QQuickItem>

#include <functional>
#include <mutex>

namespace quelto {

/// Runs tasks on the thread of an item, until the item is gone.
///
/// Thread: any.
class ItemTasks {
public:
    explicit ItemTasks(QQuickItem& item)
        : m_item(&item)
    {
    }

    void post(const std::function<void()>& task)
    {
        const std::scoped_lock guard(m_lock);
        if (m_item != nullptr) {
            QMetaObject::invokeMethod(m_item, task, Qt::QueuedConnection);
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
