// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopTrash.h"

#include <QFile>

#include <gio/gio.h>

#include <memory>

namespace quelto {

namespace {

/// Files are only renamed: thousands take less.
constexpr std::chrono::seconds ExitTimeout{5};

struct Release {
    void operator()(GFile* file) const noexcept { g_object_unref(file); }
    void operator()(GError* error) const noexcept { g_error_free(error); }
};

GVfs* localFiles()
{
    // A reference of our own: GIO's module for remote files gives back one that it never had when no service of its own
    // answers on the session bus.
    static auto* const vfs = G_VFS(g_object_ref(g_vfs_get_local()));
    return vfs;
}

void moveToTrash(const QString& path)
{
    // GIO rather than Qt 6.4, whose record of where a file was does not escape per cent signs: it would come back under
    // another name. The local file system by itself, since everything else that GIO knows asks the session bus first.
    const std::unique_ptr<GFile, Release> file(
        g_vfs_get_file_for_path(localFiles(), QFile::encodeName(path).constData()));
    GError* failure = nullptr;
    if (g_file_trash(file.get(), nullptr, &failure)) {
        return;
    }
    const std::unique_ptr<GError, Release> error(failure);
    // GIO keeps no bin on volumes that it takes for the system's own, such as one under /srv.
    if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED)) {
        QFile::moveToTrash(path);
    }
}

} // namespace

FreedesktopTrash::~FreedesktopTrash()
{
    m_queue.finish(ExitTimeout);
}

void FreedesktopTrash::recycle(const QStringList& paths, std::function<void()> done)
{
    m_queue.post([paths, done = std::move(done)] {
        for (const QString& path : paths) {
            if (!path.isEmpty()) {
                moveToTrash(path);
            }
        }
        if (done) {
            done();
        }
    });
}

} // namespace quelto
