// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/base/disk/NtfsDisk.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <sys/mount.h>

namespace quelto::test {

namespace {

constexpr qint64 DiskBytes = 16 << 20;

bool succeeds(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace

NtfsDisk::NtfsDisk()
{
    const auto image = m_folder.filePath(QStringLiteral("image"));
    QFile file(image);
    m_isMounted = QDir().mkpath(path()) && file.open(QIODevice::WriteOnly) && file.resize(DiskBytes) &&
        succeeds(QStringLiteral("mkfs.ntfs"), {QStringLiteral("-FQ"), image}) &&
        succeeds(QStringLiteral("ntfs-3g"), {QStringLiteral("-o"), QStringLiteral("windows_names"), image, path()});
}

NtfsDisk::~NtfsDisk()
{
    if (m_isMounted) {
        ::umount2(QFile::encodeName(path()).constData(), MNT_DETACH);
    }
}

} // namespace quelto::test
