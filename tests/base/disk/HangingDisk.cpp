// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/base/disk/HangingDisk.h"

#include <QFile>

#include <fcntl.h>
#include <sys/mount.h>

namespace quelto::test {

HangingDisk::HangingDisk()
    : m_requests(::open("/dev/fuse", O_RDWR | O_CLOEXEC))
{
    const auto options = "fd=" + QByteArray::number(m_requests.get()) + ",rootmode=40000,user_id=0,group_id=0";
    m_isMounted = ::mount("hanging", QFile::encodeName(path()).constData(), "fuse", MS_NOSUID | MS_NODEV,
                          options.constData()) == 0;
}

HangingDisk::~HangingDisk()
{
    disconnect();
    if (m_isMounted) {
        ::umount2(QFile::encodeName(path()).constData(), MNT_DETACH);
    }
}

void HangingDisk::disconnect()
{
    m_requests = FileDescriptor();
}

} // namespace quelto::test
