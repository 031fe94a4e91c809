// SPDX-License-Identifier: GPL-3.0-or-later
// A moving picture with sound, in which tests can read the number of each frame and the time of each beep. Prints one
// line when everything is on the screen. At its end, prints the frames that it did not show in time on standard error.
#include "tests/scene/SceneOptions.h"
#include "tests/scene/SceneSound.h"
#include "tests/scene/SceneTime.h"
#include "tests/scene/SceneWindow.h"

#include <pipewire/pipewire.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>
#include <vector>

namespace quelto {

namespace {

volatile std::sig_atomic_t isStopRequested = 0;

/// The scene's two sound streams. Creates them again after the sound server has ended.
class SceneVoices {
public:
    explicit SceneVoices(const SceneOptions& options)
        : m_speaker{.name = "quelto_scene",
                    .leftTone = options.tone.value_or(0),
                    .hasBeeps = options.motion != SceneMotion::Still}
        , m_microphone{.sink = options.microphoneSink,
                       .name = "quelto_scene_voice",
                       .leftTone = options.microphoneTone.value_or(0),
                       .rightTone = options.microphoneTone.value_or(0)}
        , m_isSilent(options.isSilent)
        , m_hasMicrophone(options.microphoneTone.has_value())
    {
    }

    void setStart(std::int64_t start)
    {
        m_start = start;
        if (m_played)
            m_played->setStart(start);
    }

    /// Connects the streams that are not connected.
    void reconnect()
    {
        if (m_isSilent)
            return;
        reconnect(m_played, m_speaker);
        if (m_start)
            m_played->setStart(*m_start);
        if (m_hasMicrophone)
            reconnect(m_spoken, m_microphone);
    }

    /// Waits until all streams play. Without a sound server, the scene continues without sound.
    void waitUntilPlaying()
    {
        const std::int64_t deadline = now() + 3 * Second;
        while (!arePlaying() && now() < deadline)
            sleepUntil(now() + 5 * Millisecond);
        if (!arePlaying())
            std::fputs("scene: no sound server, so there is no sound\n", stderr);
    }

private:
    bool arePlaying() const
    {
        return m_isSilent || (m_played->isPlaying() && (!m_hasMicrophone || m_spoken->isPlaying()));
    }

    static void reconnect(std::optional<SceneSound>& sound, const SceneVoice& voice)
    {
        if (!sound || sound->isLost())
            sound.emplace(voice);
    }

    SceneVoice m_speaker;
    SceneVoice m_microphone;
    bool m_isSilent;
    bool m_hasMicrophone;
    std::optional<std::int64_t> m_start;
    std::optional<SceneSound> m_played;
    std::optional<SceneSound> m_spoken;
};

/// The frames that were not on the screen, and those that were too late.
struct FrameReport {
    std::vector<std::uint64_t> missed;
    std::vector<std::uint64_t> late;

    void print(std::uint64_t frames) const
    {
        std::fprintf(stderr, "scene: %llu frames", static_cast<unsigned long long>(frames));
        print("missed", missed);
        print("late", late);
        std::fputs("\n", stderr);
    }

private:
    static void print(const char* what, const std::vector<std::uint64_t>& frames)
    {
        std::fprintf(stderr, "; %s:", what);
        for (const std::uint64_t frame : frames)
            std::fprintf(stderr, " %llu", static_cast<unsigned long long>(frame));
    }
};

/// Draws frame n at start + n / fps, until a signal or the end of the given time.
void play(const SceneOptions& options, SceneWindow& window, SceneVoices& voices, std::int64_t start)
{
    const std::int64_t fps = options.framesPerSecond;
    // Long enough for a recording at half the rate, and short enough to be one event.
    const std::uint64_t flashFrames = static_cast<std::uint64_t>(std::max<std::int64_t>(1, fps / 10));
    FrameReport report;
    std::uint64_t frame = 0;
    for (; isStopRequested == 0; ++frame) {
        const std::int64_t deadline = start + static_cast<std::int64_t>(frame) * Second / fps;
        if (options.seconds && deadline - start >= static_cast<std::int64_t>(*options.seconds * Second))
            break;
        if (now() > deadline + Second / fps / 2) {
            report.missed.push_back(frame);
            continue;
        }
        sleepUntil(deadline);
        window.draw(frame, frame % static_cast<std::uint64_t>(fps) < flashFrames);
        if (now() > deadline + Second / fps / 2)
            report.late.push_back(frame);
        if (frame % static_cast<std::uint64_t>(fps) == static_cast<std::uint64_t>(fps / 2))
            voices.reconnect();
    }
    const std::vector<std::uint64_t> notShown = window.notShown();
    report.missed.insert(report.missed.end(), notShown.begin(), notShown.end());
    report.print(frame);
}

void stayStill(const SceneOptions& options, SceneWindow& window, SceneVoices& voices)
{
    const std::int64_t start = now();
    while (isStopRequested == 0 &&
           (!options.seconds || static_cast<double>(now() - start) < *options.seconds * Second)) {
        sleepUntil(now() + 100 * Millisecond);
        window.handleEvents();
        voices.reconnect();
    }
}

int run(const SceneOptions& options)
{
    const auto window = SceneWindow::create(options);
    SceneVoices voices(options);
    voices.reconnect();
    window->waitUntilShown();
    window->draw(0, false);
    voices.waitUntilPlaying();
    // The first flash is in the future, so that the streams know the time of its beep in advance.
    const std::int64_t start = now() + Second / 5;
    voices.setStart(start);
    std::puts("scene ready");
    std::fflush(stdout);
    if (options.motion == SceneMotion::Still)
        stayStill(options, *window, voices);
    else
        play(options, *window, voices, start);
    return 0;
}

} // namespace

} // namespace quelto

int main(int count, char** words)
{
    const auto options = quelto::SceneOptions::parse(count, words);
    if (!options) {
        std::fputs(quelto::SceneOptions::usage(), stderr);
        return 64;
    }
    struct sigaction action { };
    action.sa_handler = [](int) { quelto::isStopRequested = 1; };
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    pw_init(&count, &words);
    try {
        return quelto::run(*options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "scene: %s\n", error.what());
        return 1;
    }
}
