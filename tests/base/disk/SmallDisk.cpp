// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/base/disk/SmallDisk.h"

#include <QFile>

#include <sys/mount.h>

namespace quelto::test {

SmallDisk::SmallDisk(qint64 bytes)
{
    const QByteArray options = "size=" + QByteArray::number(bytes);
    m_isMounted =
        ::mount("tmpfs", QFile::encodeName(m_folder.path()).constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_isMounted) {
        ::umount2(QFile::encodeName(m_folder.path()).constData(), MNT_DETACH);
    }
}

bool SmallDisk::makeReadOnly()
{
    return ::mount(nullptr, QFile::encodeName(m_folder.path()).constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) ==
        0;
}

} // namespace quelto::test
