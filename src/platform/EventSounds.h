// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

enum class EventSound {
    /// For a highlight: an epic moment, the end of a match.
    hero,
    /// For any other clip.
    glass,
    /// For a key that means nothing here.
    bell,
};

/// Short sounds that accompany the HUD and desktop notifications. Clips do not contain them.
///
/// Thread: main; never blocks.
/// Errors: none. Silent if there is no audio output.
class EventSounds {
public:
    virtual ~EventSounds() = default;

    virtual void play(EventSound sound) = 0;
};

} // namespace quelto
