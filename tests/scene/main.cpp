// SPDX-License-Identifier: GPL-3.0-or-later
// A moving picture with sound that tells a test which frame it sees and when a beep belongs to it. Prints one line when
// everything is on the screen, and at its end on standard error which frames it did not manage to show in time itself,
// and during which ones the machine stood still.
#include "tests/scene/SceneOptions.h"
#include "tests/scene/SceneSound.h"
#include "tests/scene/SceneTime.h"
#include "tests/scene/SceneWindow.h"
#include "tests/scene/StandstillWatch.h"

#include <pipewire/pipewire.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>
#include <vector>

namespace quelto {

namespace {

volatile std::sig_atomic_t isToldToEnd = 0;

/// The scene's two voices, made again after the sound server went away.
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

    /// Connects what is not connected.
    void revive()
    {
        if (m_isSilent)
            return;
        revive(m_played, m_speaker);
        if (m_start)
            m_played->setStart(*m_start);
        if (m_hasMicrophone)
            revive(m_spoken, m_microphone);
    }

    /// Waits until everything sounds; without a sound server the scene goes on in silence.
    void waitUntilHeard()
    {
        const std::int64_t deadline = now() + 3 * Second;
        while (!isHeard() && now() < deadline)
            sleepUntil(now() + 5 * Millisecond);
        if (!isHeard())
            std::fputs("scene: no sound server; going on in silence\n", stderr);
    }

private:
    bool isHeard() const
    {
        return m_isSilent || (m_played->isPlaying() && (!m_hasMicrophone || m_spoken->isPlaying()));
    }

    static void revive(std::optional<SceneSound>& sound, const SceneVoice& voice)
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

/// Which frames were not drawn, and which were seen too late to count on.
struct FrameReport {
    std::vector<std::uint64_t> missed;
    std::vector<std::uint64_t> late;
    /// Those during which a processor stood still.
    std::vector<std::uint64_t> standstill;

    void print(std::uint64_t frames) const
    {
        std::fprintf(stderr, "scene: %llu frames", static_cast<unsigned long long>(frames));
        print("missed", missed);
        print("late", late);
        print("standstill", standstill);
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

std::vector<std::uint64_t> framesOf(const std::vector<StandstillWatch::Standstill>& standstills, std::int64_t start,
                                    std::int64_t fps)
{
    std::vector<std::uint64_t> frames;
    for (const auto& [from, to] : standstills) {
        for (std::int64_t frame = std::max<std::int64_t>(0, from - start) * fps / Second;
             start + frame * Second / fps < to; ++frame)
            frames.push_back(static_cast<std::uint64_t>(frame));
    }
    return frames;
}

/// Draws frame n at start + n / fps until it is told to end.
void play(const SceneOptions& options, SceneWindow& window, SceneVoices& voices, std::int64_t start)
{
    const std::int64_t fps = options.framesPerSecond;
    // Long enough to be seen at half the rate, short enough to be one event.
    const std::uint64_t flashFrames = static_cast<std::uint64_t>(std::max<std::int64_t>(1, fps / 10));
    const StandstillWatch watch;
    FrameReport report;
    std::uint64_t frame = 0;
    for (; isToldToEnd == 0; ++frame) {
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
            voices.revive();
    }
    report.standstill = framesOf(watch.standstills(), start, fps);
    report.print(frame);
}

void stayStill(const SceneOptions& options, SceneVoices& voices)
{
    const std::int64_t start = now();
    while (isToldToEnd == 0 && (!options.seconds || static_cast<double>(now() - start) < *options.seconds * Second)) {
        sleepUntil(now() + 100 * Millisecond);
        voices.revive();
    }
}

int run(const SceneOptions& options)
{
    SceneWindow window(options.motion, options.place);
    SceneVoices voices(options);
    voices.revive();
    window.waitUntilShown();
    window.draw(0, false);
    voices.waitUntilHeard();
    // The first flash is a little ahead, so that its beep is not yet due when the sound learns of it.
    const std::int64_t start = now() + Second / 5;
    voices.setStart(start);
    std::puts("scene ready");
    std::fflush(stdout);
    if (options.motion == SceneMotion::Still)
        stayStill(options, voices);
    else
        play(options, window, voices, start);
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
    action.sa_handler = [](int) { quelto::isToldToEnd = 1; };
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
