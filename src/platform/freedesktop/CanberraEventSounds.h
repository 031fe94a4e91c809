// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/EventSounds.h"

#include <memory>

namespace quelto {

/// Sounds of the user's sound theme, at the volume that the mixer has for events.
///
/// They play on a connection of this process to the sound server, by which the recorder knows them for our own.
/// Destruction cuts off what still sounds.
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
