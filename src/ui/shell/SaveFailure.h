// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "base/tasks/TaskQueue.h"
#include "capture/recorder/Recorder.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>

namespace quelto {

/// Whether files can be created in the folder. Blocks while its disk does not respond.
bool isWritableFolder(const QString& folder);

/// The message of the last failed save, until it no longer matters: a later save succeeds, the next session starts, the
/// save folder changes or becomes writable again, or the user dismisses it. After the start, it can be about a clip
/// that an earlier process left unfinished.
///
/// Thread: main. The folder is examined on the work queue.
class SaveFailure : public QObject {
    Q_OBJECT
    /// Empty if there is nothing to report.
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)

public:
    /// A task on the work queue owns its data and may finish after everything else is gone.
    struct Dependencies {
        Recorder& recorder;
        const AppSettings& settings;
        TaskQueue& main;
        TaskQueue& work;
        std::function<bool(const QString& folder)> isWritable = isWritableFolder;
    };

    explicit SaveFailure(Dependencies dependencies, QObject* parent = nullptr);

    QString message() const { return m_message; }
    Q_INVOKABLE void dismiss() { report({}); }

    /// Reports a clip that an earlier process left unfinished in the save folder.
    void findUnfinishedClip();

Q_SIGNALS:
    void messageChanged();

private:
    enum class FolderState { Unknown, Writable, Unwritable };
    using FolderAnswer = std::shared_ptr<std::atomic<FolderState>>;

    struct UnfinishedClips {
        std::atomic<bool> areKnown = false;
        QStringList names;
    };

    void report(const QString& message);
    void waitFor(const std::shared_ptr<UnfinishedClips>& clips);
    void examineFolder();
    void waitFor(const FolderAnswer& answer);
    void folderExamined(const FolderAnswer& answer);

    Dependencies m_dependencies;
    QString m_message;
    /// The folder was not writable after the save failed, so it is examined until it is.
    bool m_isFolderTheCause = false;
    /// A save deletes the partial files of earlier processes.
    bool m_hasSaved = false;
    /// Counts reports, so that the examination for an earlier one ends.
    std::uint64_t m_report = 0;
};

} // namespace quelto
