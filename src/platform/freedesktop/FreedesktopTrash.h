// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/SerialQueue.h"
#include "platform/Trash.h"

namespace quelto {

/// The trash as freedesktop.org specifies it: one in the home folder and one on each other volume, because files are
/// only renamed, never copied.
///
/// The destructor waits until all requested files are moved, for at most five seconds. Files that remain because a disk
/// does not respond stay where they are.
class FreedesktopTrash final : public Trash {
public:
    FreedesktopTrash() = default;
    ~FreedesktopTrash() override;
    FreedesktopTrash(const FreedesktopTrash&) = delete;
    FreedesktopTrash& operator=(const FreedesktopTrash&) = delete;

    void moveToTrash(const QStringList& paths, std::function<void()> done) override;

private:
    SerialQueue m_queue{QStringLiteral("quelto.trash")};
};

} // namespace quelto
