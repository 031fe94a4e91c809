// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace quelto::test {

/// A file system of a few blocks in memory, to be filled or made read-only. Only root may mount one: without the right
/// it is not there, and the test that wants it is to be skipped.
class SmallDisk {
public:
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isThere() const { return m_isMounted; }
    QString path() const { return m_folder.path(); }
    bool makeReadOnly();

private:
    QTemporaryDir m_folder;
    bool m_isMounted = false;
};

} // namespace quelto::test
