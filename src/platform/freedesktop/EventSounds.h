// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/NoticeSounds.h"

#include <memory>

namespace quelto {

/// Sounds of the user's sound theme, at the volume that the mixer has for events.
///
/// They play on a connection of this process to the sound server, by which the recorder knows them for our own.
/// Destruction cuts off what still sounds.
class EventSounds final : public NoticeSounds {
public:
    EventSounds();
    ~EventSounds() override;
    EventSounds(const EventSounds&) = delete;
    EventSounds& operator=(const EventSounds&) = delete;

    void play(NoticeSound sound) override;

private:
    struct Player;
    std::unique_ptr<Player> m_player;
};

} // namespace quelto
