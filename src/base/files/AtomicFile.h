// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <span>

namespace quelto {

/// A file that appears under its final name only when it is complete. Until then it has a hidden temporary name in the
/// same folder. An unpublished file is deleted by the destructor.
///
/// A process that is killed leaves its hidden file behind; the next AtomicFile in that folder deletes it. A file lock
/// marks the hidden files of running processes.
///
/// Errors: std::system_error with the system's error code.
class AtomicFile {
public:
    /// Changes while any atomic file of this process is written or flushed, however slow its disk is. Thread: any.
    static std::uint64_t progress() noexcept;
    /// The names of the hidden files that processes left in the folder when they ended. Blocks while its disk does not
    /// respond. Errors: none.
    static QStringList abandonedIn(const QString& folder);

    /// The folder must exist.
    explicit AtomicFile(const QString& folder);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Writes at the current position and advances it.
    void write(std::span<const std::byte> bytes);
    void seek(std::int64_t position);
    /// Reads what was written, from a position, which write does not use. Returns the number of bytes, 0 at the end.
    std::size_t readAt(std::int64_t position, std::span<std::byte> bytes) const;
    std::int64_t size() const noexcept { return m_size; }

    /// Waits until all data is on the disk. Reports write errors that the system deferred. Makes progress() change
    /// every few megabytes.
    void flush();
    /// Renames the file to its final name. Returns false if the name is taken; never replaces a file. Call flush first.
    bool tryPublish(const QString& name);
    /// Renames the file to its final name and replaces a file that has it. Call flush first.
    void publish(const QString& name);

private:
    void createHiddenFile();

    FileDescriptor m_folder;
    FileDescriptor m_file;
    /// Empty once the file is published.
    QByteArray m_hiddenName;
    std::int64_t m_position = 0;
    std::int64_t m_size = 0;
    /// The system was asked to start writeback up to this position.
    std::int64_t m_writebackPosition = 0;
};

} // namespace quelto
