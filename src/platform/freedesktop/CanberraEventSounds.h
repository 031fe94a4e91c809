// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/EventSounds.h"

#include <memory>

namespace quelto {

/// Plays sounds of the user's sound theme, at the volume that the desktop's mixer has for event sounds.
///
/// They are played by this process, so the recorder recognizes them as this program's own and leaves them out. The
/// destructor stops sounds that are still playing.
class CanberraEventSounds final : public EventSounds {
public:
    CanberraEventSounds();
    ~CanberraEventSounds() override;
    CanberraEventSounds(const CanberraEventSounds&) = delete;
    CanberraEventSounds& operator=(const CanberraEventSounds&) = delete;

    void play(EventSound sound) override;

private:
    struct Player;
    std::unique_ptr<Player> m_player;
};

} // namespace quelto
