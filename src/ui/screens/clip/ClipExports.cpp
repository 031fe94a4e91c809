// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/clip/ClipExports.h"

#include "base/language/T.h"
#include "library/naming/ClipMeta.h"

#include <QPointer>

#include <mutex>

namespace quelto {

namespace {

/// Of exports that report no progress.
constexpr double UnknownProgress = 0.5;

/// Runs an export and gives the copy a sidecar, if the clip has one.
template <typename Export, typename Change>
QString exportWithSidecar(const QString& clip, const Export& work, const Change& change)
{
    // Before the export: the clip may have another name afterwards.
    const auto meta = ClipMeta::load(clip);
    auto copy = work();
    if (meta) {
        change(*meta).save(copy);
    }
    return copy;
}

} // namespace

/// Where a clip is at the moment, for its export on another thread.
class ClipExports::ClipPath {
public:
    explicit ClipPath(const QString& path)
        : m_path(path)
    {
    }

    QString get() const
    {
        const std::scoped_lock guard(m_lock);
        return m_path;
    }
    /// Runs the function, which gives the file another name and returns it, or an empty path if that failed.
    QString change(const std::function<QString()>& rename)
    {
        const std::scoped_lock changing(m_changing);
        auto path = rename();
        const std::scoped_lock guard(m_lock);
        if (!path.isEmpty()) {
            m_path = path;
        }
        return path;
    }
    /// Waits while the file gets another name.
    QString waitForChange() const
    {
        const std::scoped_lock changing(m_changing);
        return get();
    }

private:
    mutable std::mutex m_changing;
    mutable std::mutex m_lock;
    QString m_path;
};

ClipExports::ClipExports(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies))
{
}

ClipExports::~ClipExports() = default;

void ClipExports::trim(const QString& path, const TimeRange& range)
{
    // As the export does it: the times of events count from where the copy starts.
    const TimeRange part{.start = std::max(range.start, 0.0), .end = range.end};
    start(path,
          {.text = T("Kırpılıyor…"),
           .work =
               [part, run = m_dependencies.operations.trim](const QString& clip, const ExportControl& control) {
                   return exportWithSidecar(
                       clip, [&] { return run(clip, part, control); },
                       [&](const ClipMeta& meta) { return meta.trimmed(part.start, part.end); });
               },
           .finish = [this](const QString&, const QString& copy) { openCopy(copy, T("Kırpılmış klip kaydedildi")); }});
}

void ClipExports::exportAspect(const QString& path, AspectRatio aspect, FillMode fill)
{
    start(
        path,
        {.text = T("Dışa aktarılıyor…"),
         .work =
             [aspect, fill, run = m_dependencies.operations.exportAspect](const QString& clip,
                                                                          const ExportControl& control) {
                 return exportWithSidecar(
                     clip, [&] { return run(clip, aspect, fill, control); }, [](const ClipMeta& meta) { return meta; });
             },
         .finish = [this](const QString&, const QString& copy) { openCopy(copy, T("Yeni oranlı kopya kaydedildi")); }});
}

void ClipExports::shrink(const QString& path, int limitMB)
{
    start(path,
          {.text = T("Discord için küçültülüyor…"),
           .progress = Task::Progress::reported,
           .work = [limitMB, run = m_dependencies.operations.shrink](
                       const QString& clip, const ExportControl& control) { return run(clip, limitMB, control); },
           .finish =
               [this](const QString& clip, const QString& copy) {
                   Q_EMIT shrunk(clip, copy);
                   m_dependencies.library.reload();
                   m_dependencies.navigation.showToast(T("Discord sürümü hazır"));
               }});
}

void ClipExports::start(const QString& path, Task task)
{
    if (m_runs.contains(path)) {
        return;
    }
    const auto clip = std::make_shared<ClipPath>(path);
    const bool isReported = task.progress == Task::Progress::reported;
    m_runs.insert(path, {.run = {.text = task.text, .progress = isReported ? 0 : UnknownProgress}, .clip = clip});
    Q_EMIT runChanged(path);
    const QPointer<ClipExports> self(this);
    ExportQueue::Job job{.work = [clip, work = std::move(task.work)](
                                     const ExportControl& control) { return runOn(*clip, work, control); },
                         .onFinished =
                             [self, clip, finish = std::move(task.finish)](const QString& copy) {
                                 if (auto* const exports = self.data()) {
                                     exports->end(clip->get());
                                     finish(clip->get(), copy);
                                 }
                             },
                         .onFailed =
                             [self, clip](const QString& message) {
                                 if (auto* const exports = self.data()) {
                                     exports->end(clip->get());
                                     exports->m_dependencies.navigation.showToast(message);
                                 }
                             }};
    if (isReported) {
        job.onProgress = [self, clip](double progress) {
            if (auto* const exports = self.data()) {
                exports->setProgress(clip->get(), progress);
            }
        };
    }
    m_dependencies.queue.run(std::move(job));
}

void ClipExports::openCopy(const QString& copy, const QString& toast)
{
    m_dependencies.library.reload();
    m_dependencies.navigation.setSelected(Clip(copy));
    m_dependencies.navigation.showToast(toast);
}

QString ClipExports::runOn(const ClipPath& clip, const Work& work, const ExportControl& control)
{
    for (;;) {
        const auto path = clip.get();
        try {
            return work(path, control);
        } catch (...) {
            // The clip may have got another name before the export opened it.
            if (clip.waitForChange() == path) {
                throw;
            }
        }
    }
}

std::optional<ClipExports::Run> ClipExports::runOf(const QString& path) const
{
    const auto found = m_runs.constFind(path);
    return found == m_runs.cend() ? std::nullopt : std::optional(found->run);
}

void ClipExports::renameClip(const QString& path, const std::function<QString()>& rename)
{
    if (!m_runs.contains(path)) {
        rename();
        return;
    }
    const auto clip = m_runs.value(path).clip;
    if (const auto newPath = clip->change(rename); !newPath.isEmpty() && m_runs.contains(path)) {
        m_runs.insert(newPath, m_runs.take(path));
        Q_EMIT runChanged(path);
        Q_EMIT runChanged(newPath);
    }
}

void ClipExports::setProgress(const QString& path, double progress)
{
    m_runs[path].run.progress = progress;
    Q_EMIT runChanged(path);
}

void ClipExports::end(const QString& path)
{
    m_runs.remove(path);
    Q_EMIT runChanged(path);
}

} // namespace quelto
