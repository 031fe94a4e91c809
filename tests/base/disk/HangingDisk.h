// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/files/FileDescriptor.h"

#include <QString>
#include <QTemporaryDir>

namespace quelto::test {

/// A file system that does not respond, like that of an unreachable server: all calls for files in it block. Mounting
/// requires root and FUSE: a test must skip if isMounted() is false.
class HangingDisk {
public:
    HangingDisk();
    ~HangingDisk();
    HangingDisk(const HangingDisk&) = delete;
    HangingDisk& operator=(const HangingDisk&) = delete;

    bool isMounted() const { return m_isMounted; }
    QString path() const { return m_folder.path(); }
    /// The blocked calls and later ones fail.
    void disconnect();

private:
    QTemporaryDir m_folder;
    /// The file system's end of the connection. It is never read, so every call blocks.
    FileDescriptor m_requests;
    bool m_isMounted = false;
};

} // namespace quelto::test
