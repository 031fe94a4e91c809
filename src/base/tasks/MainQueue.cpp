// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/tasks/MainQueue.h"

namespace quelto {

void MainQueue::post(Task task)
{
    m_tasks.post(std::move(task));
}

void MainQueue::postAfter(HostDuration delay, Task task)
{
    m_tasks.postAfter(delay, std::move(task));
}

} // namespace quelto
