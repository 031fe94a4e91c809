// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/SaveFailure.h"

#include "base/files/AtomicFile.h"
#include "base/language/T.h"

#include <QFileInfo>
#include <QPointer>

namespace quelto {

namespace {

constexpr std::chrono::seconds ExamineInterval{2};

} // namespace

bool isWritableFolder(const QString& folder)
{
    const QFileInfo info(folder);
    return info.isDir() && info.isWritable();
}

SaveFailure::SaveFailure(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies))
{
    const auto& recorder = m_dependencies.recorder;
    connect(&recorder, &Recorder::saveFailed, this, &SaveFailure::report);
    connect(&recorder, &Recorder::clipSaved, this, [this] {
        m_hasSaved = true;
        dismiss();
    });
    connect(&recorder, &Recorder::stateChanged, this, [this] {
        if (m_dependencies.recorder.stateKind() == CaptureState::Starting) {
            dismiss();
        }
    });
    connect(&m_dependencies.settings, &AppSettings::saveFolderChanged, this, &SaveFailure::dismiss);
}

void SaveFailure::report(const QString& message)
{
    ++m_report;
    m_isFolderTheCause = false;
    if (!message.isEmpty()) {
        examineFolder();
    }
    if (std::exchange(m_message, message) != message) {
        Q_EMIT messageChanged();
    }
}

void SaveFailure::findUnfinishedClip()
{
    const auto clips = std::make_shared<UnfinishedClips>();
    m_dependencies.work.post([clips, folder = m_dependencies.settings.saveFolder()] {
        clips->names = AtomicFile::abandonedIn(folder);
        clips->areKnown = true;
    });
    waitFor(clips);
}

/// The work queue does not reply to this object, because its task may outlive it.
void SaveFailure::waitFor(const std::shared_ptr<UnfinishedClips>& clips)
{
    m_dependencies.main.postAfter(ExamineInterval, [guard = QPointer(this), clips] {
        auto* const self = guard.data();
        if (self == nullptr) {
            return;
        }
        if (!clips->areKnown) {
            self->waitFor(clips);
        } else if (!clips->names.isEmpty() && !self->m_hasSaved && self->m_message.isEmpty()) {
            self->report(
                T("Önceki klip tamamlanamadı. Yarım kalan dosya sonraki kayıtta silinecek: {0}", clips->names.first()));
        }
    });
}

void SaveFailure::examineFolder()
{
    const auto answer = std::make_shared<std::atomic<FolderState>>(FolderState::Unknown);
    m_dependencies.work.post(
        [answer, isWritable = m_dependencies.isWritable, folder = m_dependencies.settings.saveFolder()] {
            *answer = isWritable(folder) ? FolderState::Writable : FolderState::Unwritable;
        });
    waitFor(answer);
}

/// The work queue does not reply to this object, because its task may outlive it.
void SaveFailure::waitFor(const FolderAnswer& answer)
{
    m_dependencies.main.postAfter(ExamineInterval, [guard = QPointer(this), answer, report = m_report] {
        auto* const self = guard.data();
        if (self != nullptr && self->m_report == report) {
            self->folderExamined(answer);
        }
    });
}

void SaveFailure::folderExamined(const FolderAnswer& answer)
{
    switch (answer->load()) {
    case FolderState::Unknown:
        waitFor(answer);
        break;
    case FolderState::Unwritable:
        m_isFolderTheCause = true;
        examineFolder();
        break;
    case FolderState::Writable:
        if (m_isFolderTheCause) {
            dismiss();
        }
        break;
    }
}

} // namespace quelto
