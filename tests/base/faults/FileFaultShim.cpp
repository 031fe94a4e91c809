// SPDX-License-Identifier: GPL-3.0-or-later
//
// A library that makes chosen file calls of a program fail. It defines functions of the C library, so it must be
// preloaded or linked before it. FileFaults.h describes the files that control it.

#include "tests/base/faults/FileFaultRules.h"

#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

using quelto::test::FileFaultRules;
using quelto::test::ShortWrite;
using quelto::test::SlowCall;

std::mutex mutex;
FileFaultRules rules; // NOLINT(cert-err58-cpp): an exception here ends the test

// The shim's own files are read and written with system calls, which it does not intercept.
int openRaw(const std::string& path, int flags)
{
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path.c_str(), flags | O_CLOEXEC, 0666));
}

std::string contents(const std::string& path)
{
    std::string text(16 * 1024, '\0');
    const int file = openRaw(path, O_RDONLY);
    const auto size = ::syscall(SYS_read, file, text.data(), text.size());
    ::syscall(SYS_close, file);
    text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return text;
}

void append(const std::string& path, const std::string& text)
{
    const int file = openRaw(path, O_WRONLY | O_CREAT | O_APPEND);
    ::syscall(SYS_write, file, text.data(), text.size());
    ::syscall(SYS_close, file);
}

bool isWatchedThread()
{
    const char* const wanted = std::getenv("QUELTO_FAULTS_THREAD");
    char name[16] = {};
    return wanted == nullptr || (::prctl(PR_GET_NAME, name) == 0 && std::string(wanted) == name);
}

std::string pathOf(int descriptor)
{
    std::string path(4096, '\0');
    const auto link = "/proc/self/fd/" + std::to_string(descriptor);
    const auto size = ::syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), path.data(), path.size());
    path.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return path;
}

std::string pathIn(int folder, const char* name)
{
    return name[0] == '/' || folder == AT_FDCWD ? name : pathOf(folder) + '/' + name;
}

int recordedFault(const std::string& control, const char* call, const std::string& path)
{
    const std::scoped_lock guard(mutex);
    rules.use(contents(control + "/rules"));
    const auto decision = rules.decide(call, path);
    if (!decision.record.empty()) {
        append(control + "/calls", decision.record);
    }
    return decision.fault;
}

/// The fault for a call: an error code, ShortWrite, or 0 for none. Waits for a slow call. Keeps errno.
template <typename Path> int faultOf(const char* call, Path path)
{
    const char* const control = std::getenv("QUELTO_FAULTS");
    if (control == nullptr || !isWatchedThread()) {
        return 0;
    }
    const int error = errno;
    const int fault = recordedFault(control, call, path());
    if (fault == SlowCall) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    errno = error;
    return fault == SlowCall ? 0 : fault;
}

template <typename Function> Function* real(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// Makes the call, or fails with the fault's code.
template <typename Path, typename Call> auto run(const char* call, Path path, Call make) -> decltype(make())
{
    if (const int fault = faultOf(call, path); fault > 0) {
        errno = fault;
        return -1;
    }
    return make();
}

int openAt(const char* symbol, int folder, const char* path, int flags, mode_t mode)
{
    return run(
        flags & O_CREAT ? "create" : "open", [&] { return pathIn(folder, path); },
        [&] { return real<int(int, const char*, int, ...)>(symbol)(folder, path, flags, mode); });
}

// The mode is present only when a file may be created.
#define QUELTO_MODE_AFTER(flags)                                                                                       \
    mode_t mode = 0;                                                                                                   \
    if (((flags)&O_CREAT) != 0) {                                                                                      \
        va_list arguments;                                                                                             \
        va_start(arguments, flags);                                                                                    \
        mode = va_arg(arguments, mode_t);                                                                              \
        va_end(arguments);                                                                                             \
    }

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library uses reserved names
extern "C" {

int open(const char* path, int flags, ...)
{
    QUELTO_MODE_AFTER(flags)
    return openAt("openat", AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    QUELTO_MODE_AFTER(flags)
    return openAt("openat64", AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...)
{
    QUELTO_MODE_AFTER(flags)
    return openAt("openat", folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...)
{
    QUELTO_MODE_AFTER(flags)
    return openAt("openat64", folder, path, flags, mode);
}

int close(int file)
{
    const int fault = faultOf("close", [&] { return pathOf(file); });
    // The system closes the file also when it reports an error.
    const int result = real<int(int)>("close")(file);
    if (fault <= 0) {
        return result;
    }
    errno = fault;
    return -1;
}

ssize_t write(int file, const void* data, size_t size)
{
    const int fault = faultOf("write", [&] { return pathOf(file); });
    if (fault > 0) {
        errno = fault;
        return -1;
    }
    return real<ssize_t(int, const void*, size_t)>("write")(file, data, fault == ShortWrite ? (size + 1) / 2 : size);
}

ssize_t pread(int file, void* data, size_t size, off_t offset)
{
    return run(
        "pread", [&] { return pathOf(file); },
        [&] { return real<ssize_t(int, void*, size_t, off_t)>("pread")(file, data, size, offset); });
}

ssize_t pread64(int file, void* data, size_t size, off64_t offset)
{
    return run(
        "pread", [&] { return pathOf(file); },
        [&] { return real<ssize_t(int, void*, size_t, off64_t)>("pread64")(file, data, size, offset); });
}

off_t lseek(int file, off_t offset, int origin) noexcept
{
    return run(
        "lseek", [&] { return pathOf(file); },
        [&] { return real<off_t(int, off_t, int)>("lseek")(file, offset, origin); });
}

off64_t lseek64(int file, off64_t offset, int origin) noexcept
{
    return run(
        "lseek", [&] { return pathOf(file); },
        [&] { return real<off64_t(int, off64_t, int)>("lseek64")(file, offset, origin); });
}

int fdatasync(int file)
{
    return run(
        "fdatasync", [&] { return pathOf(file); }, [&] { return real<int(int)>("fdatasync")(file); });
}

int sync_file_range(int file, off64_t from, off64_t count, unsigned int flags)
{
    return run(
        "sync_file_range", [&] { return pathOf(file); },
        [&] { return real<int(int, off64_t, off64_t, unsigned int)>("sync_file_range")(file, from, count, flags); });
}

// Also the name of a type.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
int flock(int file, int operation) noexcept
{
    return run(
        "flock", [&] { return pathOf(file); }, [&] { return real<int(int, int)>("flock")(file, operation); });
}
#pragma GCC diagnostic pop

int fstat(int file, struct stat* status) noexcept
{
    return run(
        "fstat", [&] { return pathOf(file); }, [&] { return real<int(int, struct stat*)>("fstat")(file, status); });
}

int stat(const char* path, struct stat* status) noexcept
{
    return run(
        "stat", [&] { return std::string(path); },
        [&] { return real<int(const char*, struct stat*)>("stat")(path, status); });
}

int mkdir(const char* path, mode_t mode) noexcept
{
    return run(
        "mkdir", [&] { return std::string(path); },
        [&] { return real<int(const char*, mode_t)>("mkdir")(path, mode); });
}

int renameat2(int folder, const char* from, int targetFolder, const char* to, unsigned int flags) noexcept
{
    return run(
        "renameat2", [&] { return pathIn(targetFolder, to); },
        [&] {
            return real<int(int, const char*, int, const char*, unsigned int)>("renameat2")(folder, from, targetFolder,
                                                                                            to, flags);
        });
}

int renameat(int folder, const char* from, int targetFolder, const char* to) noexcept
{
    return run(
        "renameat", [&] { return pathIn(targetFolder, to); },
        [&] { return real<int(int, const char*, int, const char*)>("renameat")(folder, from, targetFolder, to); });
}

int linkat(int folder, const char* from, int targetFolder, const char* to, int flags) noexcept
{
    return run(
        "linkat", [&] { return pathIn(targetFolder, to); },
        [&] {
            return real<int(int, const char*, int, const char*, int)>("linkat")(folder, from, targetFolder, to, flags);
        });
}

int unlinkat(int folder, const char* path, int flags) noexcept
{
    return run(
        "unlinkat", [&] { return pathIn(folder, path); },
        [&] { return real<int(int, const char*, int)>("unlinkat")(folder, path, flags); });
}

dirent* readdir(DIR* folder)
{
    if (const int fault = faultOf("readdir", [&] { return pathOf(::dirfd(folder)); }); fault > 0) {
        errno = fault;
        return nullptr;
    }
    return real<dirent*(DIR*)>("readdir")(folder);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
