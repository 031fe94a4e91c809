// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace quelto {

enum class SceneMotion { Still, Low, High };

struct WindowPlace {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// What the command line asks of the scene.
struct SceneOptions {
    int framesPerSecond = 60;
    SceneMotion motion = SceneMotion::High;
    /// Nothing: full screen.
    std::optional<WindowPlace> place;
    /// Hertz of the steady tone on the left channel.
    std::optional<double> tone;
    /// Hertz of the tone that is spoken into the microphone.
    std::optional<double> microphoneTone;
    std::string microphoneSink = "quelto_mic_in";
    bool isSilent = false;
    /// Nothing: until it is told to end.
    std::optional<double> seconds;

    static const char* usage() noexcept;
    /// Nothing where a word is not understood.
    static std::optional<SceneOptions> parse(int count, char** words);
};

} // namespace quelto
