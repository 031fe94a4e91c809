// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioSample.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

struct SoundEvents {
    /// On the source's own thread, never the sound server's real-time thread. Frames of one source follow each other in
    /// time; where the device was away there is a gap in the stamps.
    std::function<void(AudioSamplePtr)> onSample;
    /// What is wrong with the source now, as a translated sentence, or nothing once it runs (again). On the source's
    /// own thread.
    std::function<void(std::optional<QString>)> onWarning;
};

/// A stream of PCM at 48,000 Hz, 32-bit float, stamped with the time at which it was heard or spoken.
///
/// It survives a restart of the sound server and the loss of its device: the stream comes back by itself.
///
/// Thread: start and stop from one thread at a time.
class SoundSource {
public:
    virtual ~SoundSource() = default;

    /// Errors: PlatformError where there is no sound server or no device at all.
    virtual void start(SoundEvents events) = 0;
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
class SoundServer {
public:
    virtual ~SoundServer() = default;

    /// What the user hears on the default output, without this program's own sounds; always stereo.
    virtual std::unique_ptr<SoundSource> systemSound() = 0;
    /// The device of that id; the default device where the id is empty or gone.
    virtual std::unique_ptr<SoundSource> microphone(const QString& id) = 0;
    virtual QList<MicrophoneInfo> microphones() = 0;
};

} // namespace quelto
