// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/AtomicFile.h"

#include "base/files/RenameToFreeName.h"

#include <QFile>
#include <QRandomGenerator>

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
// The disk gets to work in pieces of this size while the rest is still being made.
constexpr std::int64_t StartEvery = 4 << 20;

[[noreturn]] void fail(int code)
{
    throw std::system_error(code, std::generic_category());
}

template <typename Call> auto retried(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

} // namespace

AtomicFile::Descriptor::~Descriptor()
{
    if (m_number >= 0) {
        ::close(m_number);
    }
}

AtomicFile::AtomicFile(const QString& folder)
    : m_folder(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_folder.get() < 0) {
        fail(errno);
    }
    sweepAbandoned();
    createHidden();
}

AtomicFile::~AtomicFile()
{
    if (!m_hiddenName.isEmpty()) {
        ::unlinkat(m_folder.get(), m_hiddenName.constData(), 0);
    }
}

void AtomicFile::createHidden()
{
    for (;;) {
        const QByteArray name = HiddenPrefix.toByteArray() + QByteArray::number(::getpid()) + '-' +
            QByteArray::number(QRandomGenerator::global()->generate64(), 16) + HiddenSuffix.toByteArray();
        Descriptor file(::openat(m_folder.get(), name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, NewFileMode));
        if (file.get() < 0) {
            if (errno == EEXIST || errno == EINTR) {
                continue;
            }
            fail(errno);
        }
        // Between the two calls another process may have taken the file for an abandoned one.
        retried([&] { return ::flock(file.get(), LOCK_EX); });
        struct stat status { };
        if (::fstat(file.get(), &status) == 0 && status.st_nlink == 0) {
            continue;
        }
        m_file = std::move(file);
        m_hiddenName = name;
        return;
    }
}

void AtomicFile::sweepAbandoned() const
{
    const auto reader = ::openat(m_folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (reader < 0) {
        return;
    }
    const std::unique_ptr<DIR, CloseFolder> folder(::fdopendir(reader));
    if (!folder) {
        ::close(reader);
        return;
    }
    while (const auto* entry = ::readdir(folder.get())) {
        const QByteArrayView name(static_cast<const char*>(entry->d_name));
        if (!name.startsWith(HiddenPrefix) || !name.endsWith(HiddenSuffix)) {
            continue;
        }
        const Descriptor file(::openat(m_folder.get(), entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file.get() >= 0 && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
            ::unlinkat(m_folder.get(), entry->d_name, 0);
        }
    }
}

void AtomicFile::write(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const auto written = retried([&] { return ::write(m_file.get(), bytes.data(), bytes.size()); });
        if (written < 0) {
            fail(errno);
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
        m_position += written;
        m_size = std::max(m_size, m_position);
    }
    if (m_size - m_started >= StartEvery) {
        // Only a hint; what goes wrong shows in flush.
        ::sync_file_range(m_file.get(), m_started, m_size - m_started, SYNC_FILE_RANGE_WRITE);
        m_started = m_size;
    }
}

void AtomicFile::seek(std::int64_t position)
{
    if (retried([&] { return ::lseek(m_file.get(), position, SEEK_SET); }) < 0) {
        fail(errno);
    }
    m_position = position;
}

void AtomicFile::flush()
{
    // Some file systems have no such call; then the data is as safe there as it gets.
    if (retried([&] { return ::fdatasync(m_file.get()); }) < 0 && errno != EINVAL && errno != EROFS) {
        fail(errno);
    }
}

bool AtomicFile::tryPublish(const QString& name)
{
    const auto reason = renameToFreeName(m_folder.get(), m_hiddenName.constData(), QFile::encodeName(name).constData());
    if (reason == EEXIST) {
        return false;
    }
    if (reason != 0) {
        fail(reason);
    }
    m_hiddenName.clear();
    return true;
}

} // namespace quelto
