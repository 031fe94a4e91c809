// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"

#include <QList>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

struct AudioSourceEvents {
    /// Delivers the next buffer. Presentation times of one source increase; they leave a gap where the device was
    /// missing. While other programs play nothing, system audio delivers silence, about once a second.
    ///
    /// Thread: the source's own, never the sound server's real-time thread.
    std::function<void(AudioBufferPtr)> onBuffer;
    /// Reports after each start, and whenever it changes, the problem that the source has: a translated sentence for
    /// the user, or nothing if the source works.
    ///
    /// Thread: the source's own, or the thread of start().
    std::function<void(std::optional<QString>)> onWarning;
    /// Reports the ids of the applications that a source records, whenever they change. At the start there are none.
    ///
    /// Thread: the source's own.
    std::function<void(QSet<QString>)> onApplications;
};

/// A stream of PCM. Its presentation times are the times at which the audio was heard or spoken.
///
/// Without a sound server or a device the stream waits for it, at the start and later.
///
/// Units: 48,000 Hz, 32-bit float.
/// Thread: call start() and stop() from one thread at a time.
class AudioSource {
public:
    virtual ~AudioSource() = default;

    /// Does not wait for the sound server. All problems are reported as warnings.
    virtual void start(AudioSourceEvents events) = 0;
    /// No event is delivered after it returns. Does nothing if the source is not running.
    virtual void stop() noexcept = 0;
};

struct MicrophoneInfo {
    /// The sound server's name for the device. It stays the same across restarts.
    QString id;
    /// For the user.
    QString name;

    bool operator==(const MicrophoneInfo&) const = default;
};

/// The sound server.
class AudioServer {
public:
    virtual ~AudioServer() = default;

    /// What the user hears from the default output, without the audio that this program plays. Always stereo.
    virtual std::unique_ptr<AudioSource> systemAudio() = 0;
    /// The device with that id; the default device while the id is empty or the device is missing.
    virtual std::unique_ptr<AudioSource> microphone(const QString& id) = 0;
    /// What the running voice chat applications play, whichever output they use. Always stereo. Delivers nothing while
    /// none is running or all are silent; neither is a problem.
    virtual std::unique_ptr<AudioSource> voiceChat() = 0;
    /// Passes the present devices to the reply, without waiting. A sound server that does not answer within half a
    /// second has no devices.
    ///
    /// Thread: any. The reply runs on this object's own thread; it must not destroy this object. The destructor waits
    /// for a running request, half a second at most without the reply, and drops the other ones.
    virtual void listMicrophones(std::function<void(QList<MicrophoneInfo>)> reply) = 0;
};

} // namespace quelto
