// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

enum class EventSound {
    /// Something great: an epic moment, the end of a match.
    hero,
    /// Something is done: any other clip.
    glass,
};

/// Short sounds that accompany a notice. The user hears them; no clip does.
///
/// Thread: main; returns at once. Errors: none. Where there is nothing to play on, it stays silent.
class EventSounds {
public:
    virtual ~EventSounds() = default;

    virtual void play(EventSound sound) = 0;
};

} // namespace quelto
