// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <functional>

namespace quelto {

/// The desktop's bin, from which the user can bring files back.
class Trash {
public:
    virtual ~Trash() = default;

    /// Moves the files there, one after the other, and then calls `done` if there is one. A file that cannot be moved
    /// stays where it is; nothing is ever deleted.
    ///
    /// Thread: main; returns at once. `done` is called on any thread.
    virtual void recycle(const QStringList& paths, std::function<void()> done) = 0;
};

} // namespace quelto
