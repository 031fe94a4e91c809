// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace quelto::test {

/// A small NTFS file system that rejects the file names that Windows rejects. Requires root and the package ntfs-3g: a
/// test must skip if isMounted() is false.
class NtfsDisk {
public:
    NtfsDisk();
    ~NtfsDisk();
    NtfsDisk(const NtfsDisk&) = delete;
    NtfsDisk& operator=(const NtfsDisk&) = delete;

    bool isMounted() const { return m_isMounted; }
    QString path() const { return m_folder.filePath(QStringLiteral("mounted")); }

private:
    QTemporaryDir m_folder;
    bool m_isMounted = false;
};

} // namespace quelto::test
