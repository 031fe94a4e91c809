// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/SourceFile.h"

#include "base/files/FileName.h"
#include "base/files/RetryOnInterrupt.h"
#include "base/language/T.h"
#include "export/errors/ExportError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace quelto {

namespace {

ExportError cannotRead(int code)
{
    switch (code) {
    case ENOENT:
    case ENOTDIR:
        return ExportError::failed(T("Klip bulunamadı. Silinmiş veya taşınmış olabilir."));
    case EACCES:
    case EPERM:
        return ExportError::failed(T("Klibi okuma izniniz yok."));
    default:
        return ExportError::failed(QString::fromStdString(std::generic_category().message(code)));
    }
}

} // namespace

SourceFile::SourceFile(const QString& path)
    : m_folder(path.left(path.lastIndexOf(u'/')))
    , m_fileName(path.mid(path.lastIndexOf(u'/') + 1))
    // A pipe must not block, and is refused by the readers.
    , m_file(retryOnInterrupt(
          [&] { return ::open(encodeFileName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }))
{
    if (m_file.get() < 0) {
        throw cannotRead(errno);
    }
    m_state = readState();
}

QString SourceFile::readPath() const
{
    return QStringLiteral("/proc/self/fd/%1").arg(m_file.get());
}

void SourceFile::requireUnchanged() const
{
    const auto state = readState();
    if (state.isDeleted) {
        throw ExportError::failed(T("Klip dışa aktarılırken silindi."));
    }
    if (state != m_state) {
        throw ExportError::failed(T("Klip dışa aktarılırken değişti. Yeniden deneyin."));
    }
}

SourceFile::State SourceFile::readState() const
{
    struct stat status { };
    if (::fstat(m_file.get(), &status) != 0) {
        throw cannotRead(errno);
    }
    return {.size = status.st_size,
            .modifiedSeconds = status.st_mtim.tv_sec,
            .modifiedNanoseconds = status.st_mtim.tv_nsec,
            .isDeleted = status.st_nlink == 0};
}

} // namespace quelto
