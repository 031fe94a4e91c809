// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/recorder/SaveScheduler.h"

#include "base/language/T.h"
#include "base/memory/FreeMemory.h"
#include "capture/clip/RecorderError.h"
#include "capture/settings/CaptureSettings.h"
#include "library/naming/ClipMeta.h"
#include "library/naming/ClipName.h"

#include <QPointer>

namespace quelto {

namespace {

using std::chrono::milliseconds;

// From the request to the snapshot, so that the buffer contains the end time.
constexpr milliseconds SaveDelay{250};
// Between attempts while another save runs, or while the buffer has no key frame.
constexpr milliseconds RetryInterval{500};
// From the start of recording to the saves that waited for it.
constexpr milliseconds FlushDelay{1000};
constexpr int LastRetriedAttempt = 5;

bool hasKeyframe(const EncodedFrames& video)
{
    return std::ranges::any_of(video, [](const EncodedFramePtr& sample) { return sample->isKeyframe(); });
}

} // namespace

SaveScheduler::SaveScheduler(const Dependencies& dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
{
}

void SaveScheduler::saveClip()
{
    if (m_state == CaptureState::Idle || m_state == CaptureState::Error) {
        return;
    }
    dispatch({.seconds = m_dependencies.settings.clipLength(), .game = frontApplicationName()}, m_dependencies.clock());
}

QString SaveScheduler::frontApplicationName() const
{
    const auto front = m_dependencies.frontApplication.current();
    if (front && (front->isThisProgram || front->isDesktop)) {
        return T("Masaüstü");
    }
    return front && !front->name.isEmpty() ? front->name : T("Ekran");
}

void SaveScheduler::saveAutoClip(const Moment& moment, const QString& game)
{
    dispatch({.seconds = std::min(bufferSeconds(m_dependencies.settings), moment.seconds),
              .game = game,
              .suffix = momentSuffix(moment.tier, moment.score, moment.label),
              .moment = moment},
             m_dependencies.clock());
}

void SaveScheduler::dispatch(const Request& request, HostTime endTime)
{
    switch (m_state) {
    case CaptureState::Recording:
        saveWhenFree(request, endTime);
        break;
    case CaptureState::Starting:
        m_pending.append(request);
        break;
    case CaptureState::Idle:
    case CaptureState::Error:
        break;
    }
}

void SaveScheduler::saveWhenFree(const Request& request, HostTime endTime)
{
    if (m_state != CaptureState::Recording) {
        return;
    }
    if (m_isSaving) {
        ++m_waiting;
        onMain(RetryInterval, [this, request, endTime] {
            --m_waiting;
            saveWhenFree(request, endTime);
        });
    } else {
        schedule(request, endTime, 0);
    }
}

void SaveScheduler::schedule(const Request& request, HostTime endTime, int attempt)
{
    setSaving(true);
    const Save planned{.request = request,
                       .endTime = endTime,
                       .attempt = attempt,
                       .folder = m_dependencies.settings.saveFolder(),
                       .systemGain = static_cast<float>(m_dependencies.settings.systemVolume()),
                       .micGain = static_cast<float>(m_dependencies.settings.micVolume())};
    m_dependencies.work.postAfter(SaveDelay, [this, planned] {
        save(planned);
        // What the threads of a save freed would otherwise stay, and grow with the number of saves.
        returnFreeMemory();
    });
}

void SaveScheduler::save(const Save& save)
{
    auto snapshot = m_dependencies.buffer.snapshot();
    if (!hasKeyframe(snapshot.video) && save.attempt <= LastRetriedAttempt) {
        onMain(RetryInterval, [this, save] { retry(save); });
        return;
    }
    std::optional<RecorderError> failure;
    try {
        auto clip = m_dependencies.write({.snapshot = std::move(snapshot),
                                          .systemGain = save.systemGain,
                                          .micGain = save.micGain,
                                          .endTime = save.endTime,
                                          .seconds = save.request.seconds,
                                          .folder = save.folder,
                                          .game = save.request.game,
                                          .suffix = save.request.suffix});
        clip.moment = save.request.moment;
        if (clip.moment) {
            ClipMeta::of(*clip.moment, clip.duration).save(clip.path);
        }
        onMain({}, [this, clip] {
            setSaving(false);
            Q_EMIT clipSaved(clip);
        });
        return;
    } catch (const RecorderError& error) {
        failure = error;
    } catch (const std::exception& error) {
        // For example out of memory. The next request must still be served.
        failure = RecorderError::writer(QString::fromUtf8(error.what()));
    }
    onMain({}, [this, failure = *failure] {
        setSaving(false);
        Q_EMIT saveFailed(failure.message(), failure.reason());
    });
}

void SaveScheduler::retry(const Save& save)
{
    setSaving(false);
    schedule(save.request, m_dependencies.clock(), save.attempt + 1);
}

void SaveScheduler::setState(CaptureState state)
{
    const auto before = std::exchange(m_state, state);
    if (state == CaptureState::Recording && before == CaptureState::Starting) {
        if (!m_pending.isEmpty()) {
            onMain(FlushDelay, [this, requests = std::exchange(m_pending, {})] {
                for (const auto& request : requests) {
                    // Does nothing if the session has ended meanwhile.
                    saveWhenFree(request, m_dependencies.clock());
                }
            });
        }
    } else if (state != CaptureState::Starting) {
        m_pending.clear();
    }
}

void SaveScheduler::setSaving(bool isSaving)
{
    if (std::exchange(m_isSaving, isSaving) != isSaving) {
        Q_EMIT isSavingChanged();
    }
}

void SaveScheduler::onMain(HostDuration delay, Task task)
{
    m_dependencies.main.postAfter(delay, [self = QPointer(this), task = std::move(task)] {
        if (self) {
            task();
        }
    });
}

} // namespace quelto
