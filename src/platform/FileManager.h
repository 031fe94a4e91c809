// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The desktop's window onto files.
///
/// Thread: main; returns at once. Errors: none; what cannot be shown is not.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Shows the file selected in its folder; the folder alone where the desktop offers no more.
    virtual void reveal(const QString& path) = 0;
    /// Shows what is in the folder, which is made if it is missing.
    virtual void openFolder(const QString& path) = 0;
};

} // namespace quelto
