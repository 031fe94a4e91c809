// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The desktop's file manager.
///
/// Thread: main; never blocks on the file manager or a disk.
/// Errors: none. A file that cannot be shown is ignored.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Shows the folder with the file selected, or just the folder if the desktop cannot select a file.
    virtual void reveal(const QString& path) = 0;
    /// Opens the folder. Creates it first if it does not exist.
    virtual void openFolder(const QString& path) = 0;
};

} // namespace quelto
