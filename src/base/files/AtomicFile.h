// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <span>

namespace quelto {

/// A file that appears under its name only when it is whole. Until then it has a hidden name in the same folder, and it
/// is gone if it never gets its own.
///
/// A process that is killed leaves its hidden file behind; the next one made in that folder clears it away. A hidden
/// file whose process lives is known by its lock.
///
/// Errors: std::system_error with the system's own code.
class AtomicFile {
public:
    /// The folder must exist.
    explicit AtomicFile(const QString& folder);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// At the current position, which then lies behind what was written.
    void write(std::span<const std::byte> bytes);
    void seek(std::int64_t position);
    std::int64_t size() const noexcept { return m_size; }

    /// Waits until the disk has everything. An error that the system held back comes out here.
    void flush();
    /// Gives the file its name, never over another one: false if the name is taken. Call flush first.
    bool tryPublish(const QString& name);

private:
    class Descriptor {
    public:
        explicit Descriptor(int number = -1) noexcept
            : m_number(number)
        {
        }
        ~Descriptor();
        Descriptor(Descriptor&& other) noexcept
            : m_number(std::exchange(other.m_number, -1))
        {
        }
        Descriptor& operator=(Descriptor&& other) noexcept
        {
            std::swap(m_number, other.m_number);
            return *this;
        }
        int get() const noexcept { return m_number; }

    private:
        int m_number;
    };

    void createHidden();
    void sweepAbandoned() const;

    Descriptor m_folder;
    Descriptor m_file;
    /// Empty once the file has its own name.
    QByteArray m_hiddenName;
    std::int64_t m_position = 0;
    std::int64_t m_size = 0;
    /// Up to here the system was asked to begin writing to the disk.
    std::int64_t m_started = 0;
};

} // namespace quelto
