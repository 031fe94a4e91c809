// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace quelto {

enum class SceneMotion { Still, Low, High };
enum class SceneServer { X11, Wayland };

struct WindowPlace {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// The options from the command line.
struct SceneOptions {
    int framesPerSecond = 60;
    SceneMotion motion = SceneMotion::High;
    /// Full screen if not set. A Wayland compositor ignores the position.
    std::optional<WindowPlace> place;
    /// X11 if DISPLAY is set, and otherwise Wayland if WAYLAND_DISPLAY is.
    SceneServer server = SceneServer::X11;
    /// Hertz of the steady tone on the left channel.
    std::optional<double> tone;
    /// Hertz of the tone that the microphone hears.
    std::optional<double> microphoneTone;
    std::string microphoneSink = "quelto_mic_in";
    bool isSilent = false;
    /// Runs until a signal if not set.
    std::optional<double> seconds;

    static const char* usage() noexcept;
    /// Returns nothing for an unknown option or a wrong value.
    static std::optional<SceneOptions> parse(int count, char** words);
};

} // namespace quelto
