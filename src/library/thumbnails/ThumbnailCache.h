// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "media/reader/ClipReader.h"

#include <QImage>
#include <QString>

#include <optional>

namespace quelto {

class BackgroundThreads;

/// Thumbnails and technical data of clips, read on demand and a few files at a time. The newest request is read first,
/// because it belongs to the card that scrolled into view last.
///
/// Data is cached by path until the process ends, even if another file replaces the clip. Pictures are evicted when
/// they exceed the byte limit, except those with a live ticket.
///
/// Thread: main, unless stated otherwise. Destruction waits briefly for the files being read, but not for a disk that
/// hangs.
class ThumbnailCache {
    struct State;

public:
    /// The image is null if the file has no picture.
    using Callback = std::function<void(const QImage&, const ClipInfo&)>;

    /// Keeps a request alive while its clip is on screen. Dropping it cancels the callback and a read that has not
    /// started, unless another ticket needs it, and allows the picture to be evicted. May outlive the cache.
    class Ticket {
    public:
        Ticket() = default;
        ~Ticket() { drop(); }
        Ticket(Ticket&& other) noexcept;
        Ticket& operator=(Ticket&& other) noexcept;

    private:
        friend ThumbnailCache;
        Ticket(std::weak_ptr<State> state, quint64 number);
        void drop() noexcept;

        std::weak_ptr<State> m_state;
        quint64 m_number = 0;
    };

    struct Dependencies {
        /// Runs the callbacks.
        TaskQueue& main;
        /// Reads the files: starts tasks in order, several at a time. Thread: called from main.
        std::function<void(Task)> work;
        /// Thread: called within tasks of `work`.
        std::function<ClipPreview(const QString& path, const std::stop_token& stop)> read;
        /// Limit of all pictures together.
        qsizetype byteLimit;
    };

    /// Reads real files on its own threads. The queue must outlive the cache.
    explicit ThumbnailCache(TaskQueue& main);
    explicit ThumbnailCache(const Dependencies& dependencies);
    ~ThumbnailCache();
    ThumbnailCache(const ThumbnailCache&) = delete;
    ThumbnailCache& operator=(const ThumbnailCache&) = delete;

    /// Null if there is none.
    /// Thread: any.
    QImage cachedImage(const QString& path) const;
    /// Thread: any.
    std::optional<ClipInfo> cachedInfo(const QString& path) const;

    /// Calls the callback once: before returning if the picture is cached, otherwise on the main queue after the file
    /// was read. A file without a picture is read again for each request.
    [[nodiscard]] Ticket load(const QString& path, Callback callback);

private:
    std::unique_ptr<BackgroundThreads> m_threads;
    std::shared_ptr<State> m_state;
    std::function<void(Task)> m_work;
};

} // namespace quelto
