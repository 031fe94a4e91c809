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
    /// The name of the node to play to, without fallback. Empty for the default output.
    QString target;
    /// Plays the tone only in the first 50 ms of each second, and reports it to onBeep.
    bool isBeeping = false;
};

/// Plays a tone through PipeWire until it is destroyed.
class TonePlayer {
public:
    /// onBeep receives the time at which the first frame of a beep enters the graph, on the real-time thread.
    explicit TonePlayer(const Tone& tone, std::function<void(HostTime)> onBeep = {});
    ~TonePlayer();
    TonePlayer(const TonePlayer&) = delete;
    TonePlayer& operator=(const TonePlayer&) = delete;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quelto::pipewire
