// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"

#include <QString>

namespace quelto {

/// A clip that an export reads. It stays open, so that renaming it or moving it to the trash disturbs nothing.
///
/// Errors: ExportError with the reason.
class SourceFile {
public:
    explicit SourceFile(const QString& path);

    const QString& folder() const noexcept { return m_folder; }
    const QString& fileName() const noexcept { return m_fileName; }
    /// Opens this very file, whatever its name is by then.
    QString readPath() const;

    /// Throws if the file was written to or deleted since it was opened.
    void requireUnchanged() const;

private:
    struct State {
        qint64 size = 0;
        qint64 modifiedSeconds = 0;
        qint64 modifiedNanoseconds = 0;
        bool isDeleted = false;

        bool operator==(const State&) const = default;
    };
    State readState() const;

    QString m_folder;
    QString m_fileName;
    FileDescriptor m_file;
    State m_state;
};

} // namespace quelto
