// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <functional>

namespace quelto {

/// The desktop's trash, from which the user can restore files.
class Trash {
public:
    virtual ~Trash() = default;

    /// Moves the files to the trash in order, then calls `done` if it is set. A file that cannot be moved stays where
    /// it is; no file is ever deleted.
    ///
    /// Thread: main; never blocks. `done` is called on any thread.
    virtual void moveToTrash(const QStringList& paths, std::function<void()> done) = 0;
};

} // namespace quelto
