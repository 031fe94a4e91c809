// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"

#include <QString>

#include <functional>
#include <memory>

namespace quelto::pipewire {

struct Tone {
    double leftHertz = 440;
    double rightHertz = 440;
    float amplitude = 0.25F;
    /// A node's name, to which the player then keeps; empty for the default output, whatever that is.
    QString target;
    /// The tone sounds for 50 ms at the beginning of each second that the player plays, and onBeep tells when.
    bool isBeeping = false;
};

/// Plays a tone through PipeWire until it is destroyed.
class TonePlayer {
public:
    /// onBeep: when the first frame of a beep enters the graph; on the real-time thread.
    explicit TonePlayer(const Tone& tone, std::function<void(HostTime)> onBeep = {});
    ~TonePlayer();
    TonePlayer(const TonePlayer&) = delete;
    TonePlayer& operator=(const TonePlayer&) = delete;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quelto::pipewire
