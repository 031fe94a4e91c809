// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/AtomicFile.h"

#include "base/files/FileName.h"
#include "base/files/RenameToFreeName.h"
#include "base/files/RetryOnInterrupt.h"

#include <QRandomGenerator>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace quelto {

namespace {

constexpr QByteArrayView HiddenPrefix = ".quelto-";
constexpr QByteArrayView HiddenSuffix = ".part";
constexpr mode_t NewFileMode = 0666;
// Writeback starts in steps of this size while the rest of the file is still being produced.
constexpr std::int64_t WritebackStep = 4 << 20;

[[noreturn]] void fail(int code)
{
    throw std::system_error(code, std::generic_category());
}

/// Some file systems cannot flush; nothing more can be done there.
void failUnlessUnsupported(int result)
{
    if (result < 0 && errno != EINVAL && errno != EROFS && errno != ENOSYS) {
        fail(errno);
    }
}

struct CloseDir {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

std::atomic<std::uint64_t> allProgress = 0;

/// Calls the action with the name of each hidden file in the folder whose process has ended.
template <typename Action> void forEachAbandoned(int folderDescriptor, Action action)
{
    const auto fd = ::openat(folderDescriptor, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        return;
    }
    const std::unique_ptr<DIR, CloseDir> folder(::fdopendir(fd));
    if (!folder) {
        ::close(fd);
        return;
    }
    while (const auto* entry = ::readdir(folder.get())) {
        const QByteArrayView name(static_cast<const char*>(entry->d_name));
        if (!name.startsWith(HiddenPrefix) || !name.endsWith(HiddenSuffix)) {
            continue;
        }
        const auto file = ::openat(folderDescriptor, entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) == 0) {
            action(static_cast<const char*>(entry->d_name));
        }
        if (file >= 0) {
            ::close(file);
        }
    }
}

} // namespace

std::uint64_t AtomicFile::progress() noexcept
{
    return allProgress.load(std::memory_order_relaxed);
}

QStringList AtomicFile::abandonedIn(const QString& folder)
{
    QStringList names;
    const FileDescriptor descriptor(::open(encodeFileName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.get() >= 0) {
        forEachAbandoned(descriptor.get(), [&](const char* name) { names.append(QString::fromUtf8(name)); });
    }
    return names;
}

AtomicFile::AtomicFile(const QString& folder)
    : m_folder(retryOnInterrupt(
          [&] { return ::open(encodeFileName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }))
{
    if (m_folder.get() < 0) {
        fail(errno);
    }
    forEachAbandoned(m_folder.get(), [this](const char* name) { ::unlinkat(m_folder.get(), name, 0); });
    createHiddenFile();
}

AtomicFile::~AtomicFile()
{
    if (!m_hiddenName.isEmpty()) {
        retryOnInterrupt([&] { return ::unlinkat(m_folder.get(), m_hiddenName.constData(), 0); });
    }
}

void AtomicFile::createHiddenFile()
{
    for (;;) {
        const QByteArray name = HiddenPrefix.toByteArray() + QByteArray::number(::getpid()) + '-' +
            QByteArray::number(QRandomGenerator::global()->generate64(), 16) + HiddenSuffix.toByteArray();
        FileDescriptor file(
            ::openat(m_folder.get(), name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, NewFileMode));
        if (file.get() < 0) {
            if (errno == EEXIST || errno == EINTR) {
                continue;
            }
            fail(errno);
        }
        // Another process may have deleted the file as abandoned before it was locked.
        retryOnInterrupt([&] { return ::flock(file.get(), LOCK_EX); });
        struct stat status { };
        if (::fstat(file.get(), &status) == 0 && status.st_nlink == 0) {
            continue;
        }
        m_file = std::move(file);
        m_hiddenName = name;
        return;
    }
}

void AtomicFile::write(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const auto written = retryOnInterrupt([&] { return ::write(m_file.get(), bytes.data(), bytes.size()); });
        if (written < 0) {
            fail(errno);
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
        m_position += written;
        ++allProgress;
        m_size = std::max(m_size, m_position);
    }
    if (m_size - m_writebackPosition >= WritebackStep) {
        // Only a hint. Errors are reported by flush.
        ::sync_file_range(m_file.get(), m_writebackPosition, m_size - m_writebackPosition, SYNC_FILE_RANGE_WRITE);
        m_writebackPosition = m_size;
    }
}

void AtomicFile::seek(std::int64_t position)
{
    if (retryOnInterrupt([&] { return ::lseek(m_file.get(), position, SEEK_SET); }) < 0) {
        fail(errno);
    }
    m_position = position;
}

std::size_t AtomicFile::readAt(std::int64_t position, std::span<std::byte> bytes) const
{
    const auto count = retryOnInterrupt([&] { return ::pread(m_file.get(), bytes.data(), bytes.size(), position); });
    if (count < 0) {
        fail(errno);
    }
    return static_cast<std::size_t>(count);
}

void AtomicFile::flush()
{
    // All at once could take a slow disk longer than a disk is given to respond.
    for (std::int64_t position = 0; m_size - position > WritebackStep; position += WritebackStep) {
        constexpr unsigned int Completely =
            SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
        // An error that is reported here is not reported again.
        failUnlessUnsupported(
            retryOnInterrupt([&] { return ::sync_file_range(m_file.get(), position, WritebackStep, Completely); }));
        ++allProgress;
    }
    failUnlessUnsupported(retryOnInterrupt([&] { return ::fdatasync(m_file.get()); }));
}

bool AtomicFile::tryPublish(const QString& name)
{
    const auto error = renameToFreeName(m_folder.get(), m_hiddenName.constData(), encodeFileName(name).constData());
    if (error == EEXIST) {
        return false;
    }
    if (error != 0) {
        fail(error);
    }
    m_hiddenName.clear();
    return true;
}

void AtomicFile::publish(const QString& name)
{
    const auto encoded = encodeFileName(name);
    if (retryOnInterrupt([&] {
            return ::renameat(m_folder.get(), m_hiddenName.constData(), m_folder.get(), encoded.constData());
        }) < 0) {
        fail(errno);
    }
    m_hiddenName.clear();
}

} // namespace quelto
