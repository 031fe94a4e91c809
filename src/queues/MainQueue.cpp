// SPDX-License-Identifier: GPL-3.0-or-later
#include "queues/MainQueue.h"

#include <QTimer>

namespace quelto {

void MainQueue::post(Task task)
{
    QMetaObject::invokeMethod(&m_context, std::move(task), Qt::QueuedConnection);
}

void MainQueue::postAfter(HostDuration delay, Task task)
{
    // A timer belongs to the thread that starts it, so a call from elsewhere travels to the main thread first.
    post([this, delay, task = std::move(task)]() mutable {
        QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(delay), Qt::PreciseTimer, &m_context,
                           std::move(task));
    });
}

} // namespace quelto
