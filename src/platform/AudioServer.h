// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

struct AudioSourceEvents {
    /// On the source's own thread, never the sound server's real-time thread. Frames of one source follow each other in
    /// time; where the device was away there is a gap in the stamps.
    std::function<void(AudioBufferPtr)> onSample;
    /// What is wrong with the source now, as a translated sentence, or nothing once it runs (again). On the source's
    /// own thread.
    std::function<void(std::optional<QString>)> onWarning;
};

/// A stream of PCM at 48,000 Hz, 32-bit float, stamped with the time at which it was heard or spoken.
///
/// It survives a restart of the sound server and the loss of its device: the stream comes back by itself.
///
/// Thread: start and stop from one thread at a time.
class AudioSource {
public:
    virtual ~AudioSource() = default;

    /// Errors: PlatformError where there is no sound server or no device at all.
    virtual void start(AudioSourceEvents events) = 0;
    /// No event comes after it returns. Does nothing when nothing runs.
    virtual void stop() noexcept = 0;
};

struct MicrophoneInfo {
    /// The sound server's name of the device, which stays the same over restarts.
    QString id;
    QString name;

    bool operator==(const MicrophoneInfo&) const = default;
};

/// The sound server.
class AudioServer {
public:
    virtual ~AudioServer() = default;

    /// What the user hears on the default output, without this program's own sounds; always stereo.
    virtual std::unique_ptr<AudioSource> systemAudio() = 0;
    /// The device of that id; the default device where the id is empty or gone.
    virtual std::unique_ptr<AudioSource> microphone(const QString& id) = 0;
    virtual QList<MicrophoneInfo> microphones() = 0;
};

} // namespace quelto
