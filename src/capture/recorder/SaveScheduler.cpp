// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/recorder/SaveScheduler.h"

#include "base/language/T.h"
#include "capture/clip/RecorderError.h"
#include "library/naming/ClipMeta.h"
#include "library/naming/ClipName.h"
#include "media/mux/MediaDuration.h"

#include <QPointer>

namespace quelto {

namespace {

using std::chrono::milliseconds;

// From the request to the snapshot, so that the buffer catches up to the end time and past it.
constexpr milliseconds SaveDelay{250};
// While another save runs, and while there is no key frame in the buffer.
constexpr milliseconds RetryInterval{500};
// From reaching the recording state to the saves that waited for it.
constexpr milliseconds FlushDelay{1000};
constexpr int LastRetriedAttempt = 5;
// A match that is watched asks for a few in a minute. What asks for more has gone wild, and must not fill the disk.
constexpr qsizetype MostWaitingMoments = 20;

bool hasKeyframe(const EncodedFrames& video)
{
    return std::ranges::any_of(video, [](const EncodedFramePtr& sample) { return sample->isKeyframe(); });
}

} // namespace

SaveScheduler::SaveScheduler(const Dependencies& parts, QObject* parent)
    : QObject(parent)
    , m_dependencies(parts)
{
}

void SaveScheduler::saveClip()
{
    if (m_state == CaptureState::Idle || m_state == CaptureState::Error) {
        return;
    }
    // Before the name is looked up, which may have to wait for the disk.
    const auto pressed = m_dependencies.clock();
    dispatch({.seconds = m_dependencies.settings.clipLength(), .game = nameOfWhatIsInFront()}, pressed);
}

QString SaveScheduler::nameOfWhatIsInFront() const
{
    const auto front = m_dependencies.frontApplication.current();
    if (front && (front->isThisProgram || front->isDesktop)) {
        return T("Masaüstü");
    }
    return front && !front->name.isEmpty() ? front->name : T("Ekran");
}

void SaveScheduler::saveAutoClip(const Moment& moment, const QString& game)
{
    if (m_waiting + m_pending.size() >= MostWaitingMoments) {
        return;
    }
    dispatch({.seconds = std::min(m_dependencies.settings.bufferSeconds(), moment.seconds),
              .game = game,
              .suffix = momentSuffix(moment.tier, moment.score, moment.label),
              .moment = moment},
             m_dependencies.clock());
}

void SaveScheduler::dispatch(const Request& wish, HostTime endTime)
{
    switch (m_state) {
    case CaptureState::Recording:
        saveWhenFree(wish, endTime);
        break;
    case CaptureState::Starting:
        m_pending.append(wish);
        break;
    case CaptureState::Idle:
    case CaptureState::Error:
        break;
    }
}

void SaveScheduler::saveWhenFree(const Request& wish, HostTime endTime)
{
    if (m_state != CaptureState::Recording) {
        return;
    }
    if (m_isSaving) {
        ++m_waiting;
        onMain(RetryInterval, [this, wish, endTime] {
            --m_waiting;
            saveWhenFree(wish, endTime);
        });
    } else {
        schedule(wish, endTime, 0);
    }
}

void SaveScheduler::schedule(const Request& wish, HostTime endTime, int attempt)
{
    setSaving(true);
    const Save planned{.wish = wish,
                       .endTime = endTime,
                       .attempt = attempt,
                       .folder = m_dependencies.settings.saveFolder(),
                       .systemGain = static_cast<float>(m_dependencies.settings.systemVolume()),
                       .micGain = static_cast<float>(m_dependencies.settings.micVolume())};
    m_dependencies.work.postAfter(SaveDelay, [this, planned] { save(planned); });
}

void SaveScheduler::save(const Save& save)
{
    auto snapshot = m_dependencies.buffer.snapshot();
    if (!hasKeyframe(snapshot.video) && save.attempt <= LastRetriedAttempt) {
        onMain(RetryInterval, [this, save] { retry(save); });
        return;
    }
    QString message;
    try {
        const auto path = m_dependencies.write({.snapshot = std::move(snapshot),
                                                .systemGain = save.systemGain,
                                                .micGain = save.micGain,
                                                .endTime = save.endTime,
                                                .seconds = save.wish.seconds,
                                                .folder = save.folder,
                                                .game = save.wish.game,
                                                .suffix = save.wish.suffix});
        if (const auto& moment = save.wish.moment) {
            ClipMeta::of(*moment, mediaDuration(path).value_or(moment->seconds)).save(path);
        }
        onMain({}, [this, path] {
            setSaving(false);
            Q_EMIT clipSaved(path);
        });
        return;
    } catch (const RecorderError& error) {
        message = error.message();
    } catch (const std::exception& error) {
        // Out of memory, say. The next request must be served all the same.
        message = RecorderError::writer(QString::fromUtf8(error.what())).message();
    }
    onMain({}, [this, message] {
        setSaving(false);
        Q_EMIT saveFailed(message);
    });
}

void SaveScheduler::retry(const Save& save)
{
    setSaving(false);
    schedule(save.wish, m_dependencies.clock(), save.attempt + 1);
}

void SaveScheduler::setState(CaptureState state)
{
    const auto before = std::exchange(m_state, state);
    if (state == CaptureState::Recording && before == CaptureState::Starting) {
        if (!m_pending.isEmpty()) {
            onMain(FlushDelay, [this, wishes = std::exchange(m_pending, {})] {
                for (const auto& wish : wishes) {
                    // By now the session may be over; what was asked for while it began goes with it.
                    saveWhenFree(wish, m_dependencies.clock());
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
