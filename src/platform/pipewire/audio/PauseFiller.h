// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/AudioBuffer.h"

#include <optional>

namespace quelto::pipewire {

/// Makes silence for the time in which a working source receives no audio.
///
/// Silence stays half a second behind the present, so that it does not overlap audio that is still on its way.
class PauseFiller {
public:
    explicit PauseFiller(int sampleRate);

    /// The source works from now on. Does nothing if it already does.
    void start(HostTime now);
    /// The source does not work, so a pause is not silence.
    void stop() { m_end.reset(); }
    /// Audio was delivered.
    void follow(const AudioBuffer& buffer);

    /// The silence that is due, half a second at least. Null if there is none.
    AudioBufferPtr tryFill(HostTime now);

private:
    int m_sampleRate;
    /// The end of what was delivered. Nothing while the source does not work.
    std::optional<HostTime> m_end;
};

} // namespace quelto::pipewire
