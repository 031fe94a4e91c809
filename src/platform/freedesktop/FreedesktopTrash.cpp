// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopTrash.h"

#include "base/files/FileName.h"

#include <QFile>

#include <gio/gio.h>

#include <memory>

namespace quelto {

namespace {

/// Files are only renamed, so even thousands take less.
constexpr std::chrono::seconds ExitTimeout{5};

struct GlibDeleter {
    void operator()(GFile* file) const noexcept { g_object_unref(file); }
    void operator()(GError* error) const noexcept { g_error_free(error); }
};

GVfs* localVfs()
{
    // Takes an extra reference: without its service on the session bus, GIO's module for remote files releases one that
    // it never took.
    static auto* const vfs = G_VFS(g_object_ref(g_vfs_get_local()));
    return vfs;
}

void trashFile(const QString& path)
{
    // Not QFile::moveToTrash(): Qt 6.4 does not escape percent signs in the original path, so the file would be
    // restored under another name. Not the default GVfs, which contacts the session bus first.
    const std::unique_ptr<GFile, GlibDeleter> file(
        g_vfs_get_file_for_path(localVfs(), encodeFileName(path).constData()));
    GError* failure = nullptr;
    if (g_file_trash(file.get(), nullptr, &failure)) {
        return;
    }
    const std::unique_ptr<GError, GlibDeleter> error(failure);
    // GIO does not support a trash on volumes that it regards as internal to the system, such as one under /srv.
    if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED)) {
        QFile::moveToTrash(path);
    }
}

} // namespace

FreedesktopTrash::~FreedesktopTrash()
{
    m_queue.finish(ExitTimeout);
}

void FreedesktopTrash::moveToTrash(const QStringList& paths, std::function<void()> done)
{
    m_queue.post([paths, done = std::move(done)] {
        for (const QString& path : paths) {
            if (!path.isEmpty()) {
                trashFile(path);
            }
        }
        if (done) {
            done();
        }
    });
}

} // namespace quelto
