// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/scene/SceneOptions.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace quelto {

namespace {

template <typename Number> std::optional<Number> number(std::string_view text)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || !(value > Number{}))
        return std::nullopt;
    return value;
}

/// `first` and `second` of "firstXsecond", where X is the separator.
bool readPair(const std::string& text, const char* format, int& first, int& second)
{
    char rest = 0;
    return std::sscanf(text.c_str(), format, &first, &second, &rest) == 2;
}

bool read(SceneOptions& options, std::string_view name, const std::string& value)
{
    if (name == "--fps") {
        const auto fps = number<int>(value);
        options.framesPerSecond = fps.value_or(0);
        return fps.has_value();
    }
    if (name == "--motion") {
        options.motion = value == "low" ? SceneMotion::Low : SceneMotion::High;
        return value == "low" || value == "high";
    }
    if (name == "--size") {
        WindowPlace place = options.place.value_or(WindowPlace{});
        const bool isRead = readPair(value, "%dx%d%c", place.width, place.height);
        options.place = place;
        return isRead && place.width > 0 && place.height > 0;
    }
    if (name == "--position") {
        WindowPlace place = options.place.value_or(WindowPlace{.width = 640, .height = 360});
        const bool isRead = readPair(value, "%d,%d%c", place.x, place.y);
        options.place = place;
        return isRead;
    }
    if (name == "--tone")
        return (options.tone = number<double>(value)).has_value();
    if (name == "--mic-tone")
        return (options.microphoneTone = number<double>(value)).has_value();
    if (name == "--mic-sink") {
        options.microphoneSink = value;
        return !value.empty();
    }
    if (name == "--seconds")
        return (options.seconds = number<double>(value)).has_value();
    return false;
}

SceneServer serverOfEnvironment()
{
    const bool isWayland = std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") != nullptr;
    return isWayland ? SceneServer::Wayland : SceneServer::X11;
}

} // namespace

const char* SceneOptions::usage() noexcept
{
    return "quelto_scene [--fps N] [--motion low|high | --still] [--size WxH] [--position X,Y] [--seconds N]\n"
           "             [--x11 | --wayland] [--silent] [--tone HZ] [--mic-tone HZ] [--mic-sink NAME]\n";
}

std::optional<SceneOptions> SceneOptions::parse(int count, char** words)
{
    SceneOptions options{.server = serverOfEnvironment()};
    for (int index = 1; index < count; ++index) {
        const std::string_view name = words[index];
        if (name == "--still") {
            options.motion = SceneMotion::Still;
        } else if (name == "--silent") {
            options.isSilent = true;
        } else if (name == "--x11") {
            options.server = SceneServer::X11;
        } else if (name == "--wayland") {
            options.server = SceneServer::Wayland;
        } else if (index + 1 == count || !read(options, name, words[index + 1])) {
            return std::nullopt;
        } else {
            ++index;
        }
    }
    return options;
}

} // namespace quelto
