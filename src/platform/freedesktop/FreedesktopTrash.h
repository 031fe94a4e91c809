// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/SerialQueue.h"
#include "platform/Trash.h"

namespace quelto {

/// The bin as freedesktop.org lays it out: the home folder's own, and one on each other volume, since a file is
/// only ever renamed into it.
///
/// Destruction waits for all files it was given, but not for ever for a disk that hangs: those stay where they are.
class FreedesktopTrash final : public Trash {
public:
    FreedesktopTrash() = default;
    ~FreedesktopTrash() override;
    FreedesktopTrash(const FreedesktopTrash&) = delete;
    FreedesktopTrash& operator=(const FreedesktopTrash&) = delete;

    void recycle(const QStringList& paths, std::function<void()> done) override;

private:
    SerialQueue m_queue{QStringLiteral("quelto.trash")};
};

} // namespace quelto
