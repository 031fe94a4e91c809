// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "export/frame/SaveFrame.h"
#include "platform/Pasteboard.h"
#include "ui/shared/Navigation.h"

#include <QObject>
#include <QSet>

#include <functional>
#include <memory>
#include <stop_token>

namespace quelto {

/// Saves frames of clips as pictures and copies them to the clipboard. A toast tells the outcome, wherever the user is
/// by then. Exports do not delay it.
///
/// A clip's frames are saved one at a time: a further request is ignored until then.
///
/// Thread: main.
class ClipFrames : public QObject {
    Q_OBJECT

public:
    struct Dependencies {
        TaskQueue& main;
        /// Its tasks own all they use, so a disk that hangs need not be waited for.
        TaskQueue& work;
        Pasteboard& pasteboard;
        Navigation& navigation;
        std::function<SavedFrame(const QString& clip, double seconds, const std::stop_token& stop)> save = &saveFrame;
    };

    explicit ClipFrames(Dependencies dependencies, QObject* parent = nullptr);
    /// Stops.
    ~ClipFrames() override;
    ClipFrames(const ClipFrames&) = delete;
    ClipFrames& operator=(const ClipFrames&) = delete;

    /// Saves the frame that the clip shows at the time. Units: seconds.
    void save(const QString& path, double seconds);
    bool isSaving(const QString& path) const { return m_saving.contains(path); }
    /// Asks the running task to end without a picture, and drops its reply. Call it before the work queue ends.
    void stop();

Q_SIGNALS:
    /// isSaving(path) has changed.
    void savingChanged(const QString& path);

private:
    /// What a task came to: one of the two, and neither if it was stopped.
    struct Outcome {
        std::optional<QImage> image;
        QString message;
    };

    static Outcome outcomeOf(const std::function<SavedFrame()>& work);
    void end(const QString& path, const Outcome& outcome);

    Dependencies m_dependencies;
    std::shared_ptr<DetachableQueue> m_replies;
    std::stop_source m_stop;
    QSet<QString> m_saving;
};

} // namespace quelto
