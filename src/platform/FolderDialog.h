// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

class QWindow;

namespace quelto {

/// The desktop's dialog in which the user chooses a folder or creates one.
///
/// Thread: main; never blocks on the user or a disk.
/// Errors: none. If no dialog can be shown, nothing happens.
class FolderDialog {
public:
    struct Request {
        QString title;
        /// Of the button that confirms.
        QString acceptLabel;
        /// The folder that is shown first. It need not exist.
        QString startFolder;
        /// The dialog is in front of this window, and ends when it is hidden or destroyed.
        QWindow* parent = nullptr;
    };
    /// The absolute path in the form of decodeFileName.
    using Reply = std::function<void(const QString& path)>;

    virtual ~FolderDialog() = default;

    /// Replies from the event loop when the user confirms, and not at all if the user cancels or this object is
    /// destroyed. Does nothing while a dialog is open.
    virtual void choose(const Request& request, Reply reply) = 0;
};

} // namespace quelto
