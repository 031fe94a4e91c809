// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace quelto::test {

/// A small in-memory file system for tests of full and read-only disks. Mounting requires root: a test must skip if
/// isMounted() is false.
class SmallDisk {
public:
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isMounted() const { return m_isMounted; }
    QString path() const { return m_folder.path(); }
    bool makeReadOnly();

private:
    QTemporaryDir m_folder;
    bool m_isMounted = false;
};

} // namespace quelto::test
