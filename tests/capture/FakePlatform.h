// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/VideoEncoder.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"

#include <atomic>
#include <cstring>
#include <deque>
#include <map>
#include <optional>

/// Desktop services that a test controls. Everything above the platform interfaces is real.
namespace quelto::test {

class FakeDisplays final : public Displays {
public:
    QList<DisplayInfo> displays{{.id = 7, .name = QStringLiteral("one"), .pixelSize = {1920, 1080}, .isMain = true}};

    bool areChosen = false;
    int newChoices = 0;
    /// Of the last call.
    DisplayChoiceEvents choice;

    QList<DisplayInfo> all() const override { return displays; }
    bool areChosenByTheDesktop() const override { return areChosen; }
    void chooseAgain(const DisplayChoiceEvents& events) override
    {
        ++newChoices;
        choice = events;
    }
};

class FakeFrameSource final : public FrameSource {
public:
    explicit FakeFrameSource(const FakeDisplays& displays)
        : m_displays(displays)
    {
    }

    FrameSourceRequest request;
    FrameSourceSettings settings;
    FrameSourceEvents events;
    int starts = 0;
    bool isRunning = false;
    std::optional<QString> error;
    /// Runs in open(), as what happens while the desktop asks the user.
    std::function<void()> whileOpening;

    QSize open(const FrameSourceRequest& wanted, const std::stop_token& cancelled) override
    {
        if (whileOpening) {
            whileOpening();
        }
        if (cancelled.stop_requested()) {
            throw PlatformError(QStringLiteral("cancelled"));
        }
        if (error) {
            throw PlatformError(*error);
        }
        request = wanted;
        const auto display = std::ranges::find(m_displays.displays, wanted.displayID, &DisplayInfo::id);
        return display == m_displays.displays.end() ? QSize() : display->pixelSize;
    }

    void start(const FrameSourceSettings& wanted, FrameSourceEvents wantedEvents) override
    {
        settings = wanted;
        events = std::move(wantedEvents);
        ++starts;
        isRunning = true;
    }

    void stop() noexcept override { isRunning = false; }

    /// The first pixel of every frame, and what a frame contains once its last reference is released.
    static constexpr std::uint8_t shownPixel = 200;
    static constexpr std::uint8_t releasedPixel = 0;
    std::atomic<int> releasedFrames = 0;

    void emitFrame(HostTime time)
    {
        auto& [frame, pixel] = m_slots.emplace_back();
        frame.presentationTime = time;
        frame.size = settings.outputSize;
        frame.luma = &pixel;
        events.onFrame({&frame, [this](VideoFrame* released) {
                            *released->luma = releasedPixel;
                            ++releasedFrames;
                            releasedFrames.notify_all();
                        }});
    }

private:
    struct Slot {
        VideoFrame frame;
        std::uint8_t pixel = shownPixel;
    };

    const FakeDisplays& m_displays;
    /// Frames stay in memory after their release, as in a FramePool.
    std::deque<Slot> m_slots;
};

class FakeAudioSource final : public AudioSource {
public:
    FakeAudioSource(int& running, std::optional<QString> problem, const QSet<QString>& applications = {})
        : m_running(running)
        , m_problem(std::move(problem))
        , m_applications(applications)
    {
    }

    AudioSourceEvents events;

    void start(AudioSourceEvents wanted) override
    {
        events = std::move(wanted);
        ++m_running;
        m_isRunning = true;
        if (events.onWarning) {
            events.onWarning(m_problem);
        }
        setApplications(m_applications);
    }

    /// Applications start and quit.
    void setApplications(const QSet<QString>& applications)
    {
        m_applications = applications;
        if (events.onApplications && m_reported != applications) {
            m_reported = applications;
            events.onApplications(applications);
        }
    }

    void stop() noexcept override
    {
        m_running -= m_isRunning ? 1 : 0;
        m_isRunning = false;
    }

    /// One stereo frame, both values at that level.
    void emitTone(float level, HostTime time = HostTime{}) const
    {
        auto sample = std::make_shared<AudioBuffer>();
        sample->presentationTime = time;
        sample->frames = 1;
        sample->data.resize(2 * sizeof level);
        std::memcpy(sample->data.data(), &level, sizeof level);
        std::memcpy(sample->data.data() + sizeof level, &level, sizeof level);
        events.onBuffer(sample);
    }

private:
    int& m_running;
    bool m_isRunning = false;
    std::optional<QString> m_problem;
    QSet<QString> m_applications;
    QSet<QString> m_reported;
};

class FakeAudioServer final : public AudioServer {
public:
    int runningSources = 0;
    QString askedFor;
    /// What new sources report at their start.
    std::optional<QString> micProblem;
    std::optional<QString> systemProblem;
    /// The sources created last; their owner may have destroyed them.
    FakeAudioSource* mic = nullptr;
    FakeAudioSource* system = nullptr;
    FakeAudioSource* chat = nullptr;
    /// Voice chat cannot be opened.
    bool hasChatFailure = false;
    /// What new voice chat sources report at their start.
    std::optional<QString> chatProblem;
    QSet<QString> chatApps;

    std::unique_ptr<AudioSource> systemAudio() override
    {
        auto source = std::make_unique<FakeAudioSource>(runningSources, systemProblem);
        system = source.get();
        return source;
    }

    std::unique_ptr<AudioSource> microphone(const QString& id) override
    {
        askedFor = id;
        auto source = std::make_unique<FakeAudioSource>(runningSources, micProblem);
        mic = source.get();
        return source;
    }

    std::unique_ptr<AudioSource> voiceChat() override
    {
        if (hasChatFailure) {
            throw std::runtime_error("no threads left");
        }
        auto source = std::make_unique<FakeAudioSource>(runningSources, chatProblem, chatApps);
        chat = source.get();
        return source;
    }

    QList<MicrophoneInfo> microphones;

    /// Replies at once.
    void listMicrophones(std::function<void(QList<MicrophoneInfo>)> reply) override { reply(microphones); }
};

class FakeGlobalKey final : public GlobalKey {
public:
    struct Combination {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        bool operator==(const Combination&) const = default;
    };

    /// The current grab, and the number of grabs so far.
    std::optional<Combination> grabbed;
    int grabs = 0;
    State present = State::Released;
    /// The state after a grab.
    State stateOfGrabs = State::Held;
    /// By key code.
    std::map<std::uint32_t, QString> typed;
    std::uint32_t held = 0;
    QString bound;

    void grab(std::uint32_t keyCode, std::uint32_t modifiers) override
    {
        grabbed = Combination{keyCode, modifiers};
        ++grabs;
        setState(stateOfGrabs);
    }

    void release() override
    {
        grabbed.reset();
        setState(State::Released);
    }

    State state() const override { return present; }
    QString boundText() const override { return bound; }
    std::uint32_t heldModifiers() override { return held; }
    QString characters(std::uint32_t keyCode) override
    {
        const auto found = typed.find(keyCode);
        return found == typed.end() ? QString() : found->second;
    }

    /// As a desktop that decides which keys a shortcut has.
    void bind(const QString& text)
    {
        bound = text;
        setState(State::Held);
    }

    void setState(State state)
    {
        present = state;
        bound = state == State::Held ? bound : QString();
        if (onStateChanged) {
            onStateChanged();
        }
    }
};

/// Records what it plays.
class FakeEventSounds final : public EventSounds {
public:
    void play(EventSound sound) override { played.push_back(sound); }

    std::vector<EventSound> played;
};

class FakeFrontApplication final : public FrontApplication {
public:
    std::optional<FrontApplicationInfo> front;

    std::optional<FrontApplicationInfo> current() const override { return front; }
};

enum class FakeKeyFrames { everyThirtieth, none };
/// Whether a frame is emitted at once, when the next one arrives, or never.
enum class FakeDelay { none, onePicture, forever };

/// What a fake encoder was given.
struct FakeEncoderInput {
    std::atomic<int> frames = 0;
    /// The first pixel of the last frame.
    std::atomic<std::uint8_t> pixel = 0;
};

/// Emits 1,024 bytes for each frame.
class FakeEncoder final : public VideoEncoder {
public:
    FakeEncoder(OnEncodedFrame onEncodedFrame, FakeKeyFrames keyFrames, FakeDelay delay, FakeEncoderInput& input)
        : m_onEncodedFrame(std::move(onEncodedFrame))
        , m_keyFrames(keyFrames)
        , m_delay(delay)
        , m_input(input)
    {
    }

    void encode(const VideoFrame& frame, HostTime presentationTime) override
    {
        auto sample = std::make_shared<EncodedFrame>();
        sample->presentationTime = presentationTime;
        sample->isNotSync = m_keyFrames == FakeKeyFrames::none || m_count % 30 != 0;
        sample->data.resize(1024);
        ++m_count;
        if (m_delay == FakeDelay::onePicture) {
            std::swap(sample, m_held);
        } else if (m_delay == FakeDelay::forever) {
            sample = nullptr;
        }
        if (sample) {
            m_onEncodedFrame(std::move(sample));
        }
        m_input.pixel = *frame.luma;
        ++m_input.frames;
        m_input.frames.notify_all();
    }

    bool hasPendingFrame() const override { return m_held != nullptr; }
    void finish() noexcept override { }
    QString name() const override { return QStringLiteral("fake"); }

private:
    OnEncodedFrame m_onEncodedFrame;
    FakeKeyFrames m_keyFrames;
    FakeDelay m_delay;
    std::shared_ptr<EncodedFrame> m_held;
    FakeEncoderInput& m_input;
    int m_count = 0;
};

/// A platform of fakes, with access to each of them.
struct FakePlatform {
    Platform platform;
    FakeDisplays* displays = nullptr;
    FakeFrameSource* frames = nullptr;
    FakeAudioServer* audioServer = nullptr;
    FakeFrontApplication* front = nullptr;

    FakePlatform()
    {
        auto ownDisplays = std::make_unique<FakeDisplays>();
        auto ownFrames = std::make_unique<FakeFrameSource>(*ownDisplays);
        auto ownAudioServer = std::make_unique<FakeAudioServer>();
        auto ownFront = std::make_unique<FakeFrontApplication>();
        displays = ownDisplays.get();
        frames = ownFrames.get();
        audioServer = ownAudioServer.get();
        front = ownFront.get();
        platform = {.displays = std::move(ownDisplays),
                    .frames = std::move(ownFrames),
                    .audioServer = std::move(ownAudioServer),
                    .globalKey = std::make_unique<FakeGlobalKey>(),
                    .frontApplication = std::move(ownFront),
                    .eventSounds = std::make_unique<FakeEventSounds>()};
    }
};

} // namespace quelto::test
