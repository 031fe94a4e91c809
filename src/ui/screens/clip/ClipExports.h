// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/operations/Exporter.h"
#include "export/operations/VideoTools.h"
#include "export/queue/ExportQueue.h"
#include "library/clips/ClipLibrary.h"
#include "ui/shared/Navigation.h"

#include <QHash>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

/// The work behind the exports. Each runs on the thread of the queue.
struct ClipOperations {
    std::function<QString(const QString& clip, const TimeRange& range, const ExportControl& control)> trim =
        &Exporter::trim;
    std::function<QString(const QString& clip, AspectRatio aspect, FillMode fill, const ExportControl& control)>
        exportAspect = &VideoTools::exportAspect;
    std::function<QString(const QString& clip, int limitMB, const ExportControl& control)> shrink =
        &Exporter::compressForDiscord;
};

/// Runs the exports that the user starts on the page of a clip, and tells their outcome. They go on when the page is
/// left; a page that is opened again finds its clip busy.
///
/// A clip has one export at a time: a further one is ignored. Failures end in a toast and leave the clip as it is.
///
/// Thread: main.
class ClipExports : public QObject {
    Q_OBJECT

public:
    struct Dependencies {
        ExportQueue& queue;
        ClipLibrary& library;
        Navigation& navigation;
        ClipOperations operations = {};
    };

    /// A running or waiting export.
    struct Run {
        QString text;
        /// Units: 0 to 1.
        double progress = 0;

        bool operator==(const Run&) const = default;
    };

    explicit ClipExports(Dependencies dependencies, QObject* parent = nullptr);
    ~ClipExports() override;
    ClipExports(const ClipExports&) = delete;
    ClipExports& operator=(const ClipExports&) = delete;

    /// Opens the new clip, which has a sidecar if the clip has one.
    void trim(const QString& path, const TimeRange& range);
    /// Opens the new clip, which has a sidecar if the clip has one.
    void exportAspect(const QString& path, AspectRatio aspect, FillMode fill);
    /// Emits shrunk(). Units: megabytes of 1,000,000 bytes.
    void shrink(const QString& path, int limitMB);

    /// Nothing if the clip is not being exported.
    std::optional<Run> runOf(const QString& path) const;
    /// Runs `rename`, which gives the clip another name and returns its new path, or an empty one if that failed. The
    /// export of the clip continues under the new name, also one that has not started.
    void renameClip(const QString& path, const std::function<QString()>& rename);

Q_SIGNALS:
    /// runOf(path) has changed.
    void runChanged(const QString& path);
    /// The clip has a smaller copy for uploads.
    void shrunk(const QString& path, const QString& copy);

private:
    class ClipPath;
    struct ActiveRun {
        Run run;
        std::shared_ptr<ClipPath> clip;
    };
    using Work = std::function<QString(const QString& clip, const ExportControl& control)>;
    struct Task {
        QString text;
        enum class Progress { unknown, reported } progress = Progress::unknown;
        /// Runs on the thread of the queue and returns the path of the new file.
        Work work;
        /// Takes the path that the clip has by then.
        std::function<void(const QString& clip, const QString& copy)> finish;
    };

    void start(const QString& path, Task task);
    static QString runOn(const ClipPath& clip, const Work& work, const ExportControl& control);
    void openCopy(const QString& copy, const QString& toast);
    void setProgress(const QString& path, double progress);
    void end(const QString& path);

    Dependencies m_dependencies;
    /// By the path of the clip.
    QHash<QString, ActiveRun> m_runs;
};

} // namespace quelto
