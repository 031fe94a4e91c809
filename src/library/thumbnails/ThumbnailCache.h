// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "media/reader/ClipReader.h"

#include <QImage>
#include <QString>

#include <optional>

namespace quelto {

class BackgroundThreads;

/// Pictures and technical data of clips, read when somebody wants to show them, a few files at a time, the newest wish
/// first: those are the cards that scrolled into sight last.
///
/// What was read under a path is kept until the process ends, also when another file takes the path. Only pictures go
/// when they take too much room, and none whose ticket lives.
///
/// Thread: main, if nothing else is said. Destruction waits a moment for the files being read, not for a disk that
/// hangs.
class ThumbnailCache {
    struct State;

public:
    /// A null image if the file gave none.
    using Callback = std::function<void(const QImage&, const ClipInfo&)>;

    /// Somebody's wish to see a clip, for as long as it is on screen. Without it the callback is not run any more, a
    /// file that nobody else waits for is not read if that has not begun, and the picture may go. It may outlive the
    /// cache.
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
        /// Where callbacks run.
        TaskQueue& main;
        /// Where files are read: runs tasks in order, several at a time. Thread: called from main.
        std::function<void(Task)> work;
        /// Thread: those of the work.
        std::function<ClipReader(const QString& path, const std::stop_token& stop)> read;
        /// For pictures.
        qsizetype byteLimit;
    };

    /// With threads of its own and the real files. The queue must outlive the cache.
    explicit ThumbnailCache(TaskQueue& main);
    explicit ThumbnailCache(const Dependencies& parts);
    ~ThumbnailCache();
    ThumbnailCache(const ThumbnailCache&) = delete;
    ThumbnailCache& operator=(const ThumbnailCache&) = delete;

    /// Null if there is none. Thread: any.
    QImage cachedImage(const QString& path) const;
    /// Thread: any.
    std::optional<ClipInfo> cachedInfo(const QString& path) const;

    /// Runs the callback once: before it returns if both picture and data are there, otherwise on the main queue when
    /// the file was read. A file without a picture is read again for each wish.
    [[nodiscard]] Ticket load(const QString& path, Callback callback);

private:
    std::unique_ptr<BackgroundThreads> m_threads;
    std::shared_ptr<State> m_state;
    std::function<void(Task)> m_work;
};

} // namespace quelto
