// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/recorder/CapturePipeline.h"

#include "base/language/T.h"
#include "capture/clip/RecorderError.h"

#include <QDebug>

namespace quelto {

namespace {

// Well below the 0.25 s between a request and its snapshot.
constexpr std::chrono::milliseconds UnchangedAfter{100};
// Less than the frame interval at any rate, so that the next frame is still later.
constexpr std::chrono::milliseconds RepetitionOffset{1};

} // namespace

CapturePipeline::CapturePipeline(Platform& platform, ReplayBuffer& buffer, OpenEncoder openEncoder)
    : m_platform(platform)
    , m_buffer(buffer)
    , m_openEncoder(std::move(openEncoder))
    , m_mic(*platform.audioServer)
    , m_videoQueue(QStringLiteral("quelto.video"), QueuePriority::userInteractive)
{
    m_mic.onBuffer = [this](AudioBufferPtr sample) { m_buffer.appendMic(std::move(sample)); };
}

CapturePipeline::~CapturePipeline()
{
    stop();
}

CaptureReport CapturePipeline::start(const CaptureSettings& settings, const CaptureEvents& events,
                                     const std::stop_token& cancelled)
{
    const auto screenSize = m_platform.frames->open(
        {.displayID = chosenDisplay(settings.displayID), .showsCursor = settings.showsCursor}, cancelled);
    CaptureReport report;
    report.outputSize = settings.outputSize(screenSize);
    report.bitsPerSecond = settings.bitrate(report.outputSize);
    report.framesPerSecond = settings.framesPerSecond;
    report.codec = settings.codec;

    auto encoder = openEncoder({.codec = settings.codec,
                                .size = report.outputSize,
                                .framesPerSecond = settings.framesPerSecond,
                                .bitsPerSecond = report.bitsPerSecond});
    m_videoQueue.sync([&] {
        m_encoder = std::move(encoder);
        m_encoderWatch.reset();
        m_onEncoderFailed = events.onStopped;
    });

    m_buffer.reset();
    m_platform.frames->start(
        {.outputSize = report.outputSize, .framesPerSecond = settings.framesPerSecond},
        {.onFrame =
             [this](VideoFramePtr frame) { m_videoQueue.post([this, frame = std::move(frame)] { encode(frame); }); },
         .onStopped = events.onStopped});
    if (settings.capturesAudio) {
        startSystemAudio(events);
    }
    if (settings.capturesMicrophone) {
        startMicrophone(settings.microphoneID, events);
    }
    if (settings.capturesVoiceChat) {
        startChatStream(events);
    }
    return report;
}

std::unique_ptr<VideoEncoder> CapturePipeline::openEncoder(const EncoderRequest& request)
{
    m_encoderRequest = request;
    try {
        return m_openEncoder(request, [this](EncodedFramePtr sample) {
            m_encoderWatch.reset();
            m_buffer.appendVideo(std::move(sample));
        });
    } catch (const EncoderError& error) {
        throw RecorderError::encoder(error.status());
    }
}

void CapturePipeline::encode(VideoFramePtr frame)
{
    m_encoderWatch.frameAt(frame->presentationTime);
    if (m_encoder && m_encoderWatch.hasFailed()) {
        replaceEncoder();
        m_encoderWatch.frameAt(frame->presentationTime);
    }
    if (!m_encoder) {
        return;
    }
    m_encoder->encode(*frame, frame->presentationTime);
    ++m_pictures;
    if (m_encoder->hasPendingFrame()) {
        m_lastPicture = std::move(frame);
        m_videoQueue.postAfter(UnchangedAfter, [this, picture = m_pictures] { repeatIfStill(picture); });
    }
}

void CapturePipeline::replaceEncoder()
{
    m_encoder.reset();
    m_lastPicture.reset();
    m_encoderWatch.reset();
    auto request = m_encoderRequest;
    try {
        if (std::exchange(request.choice, EncoderChoice::software) == EncoderChoice::software) {
            throw RecorderError::silentEncoder();
        }
        qWarning("The video encoder outputs nothing. Trying one in software.");
        m_encoder = openEncoder(request);
        m_buffer.reset();
    } catch (const RecorderError& error) {
        m_onEncoderFailed(error.message());
    } catch (const std::exception& error) {
        m_onEncoderFailed(QString::fromUtf8(error.what()));
    }
}

/// The encoder emits a frame only when the next one arrives. An unchanged screen delivers none, and a clip would end
/// one frame too early; so the last frame is encoded a second time, a moment later.
void CapturePipeline::repeatIfStill(std::uint64_t picture)
{
    if (!m_encoder || !m_lastPicture || picture != m_pictures) {
        return;
    }
    const auto repeated = std::exchange(m_lastPicture, nullptr);
    m_encoder->encode(*repeated, repeated->presentationTime + RepetitionOffset);
}

std::uint32_t CapturePipeline::chosenDisplay(std::uint32_t displayID) const
{
    const auto displays = m_platform.displays->all();
    const auto byID = std::ranges::find(displays, displayID, &DisplayInfo::id);
    if (displayID != 0 && byID != displays.end()) {
        return byID->id;
    }
    const auto main = std::ranges::find(displays, true, &DisplayInfo::isMain);
    if (main != displays.end()) {
        return main->id;
    }
    return displays.isEmpty() ? throw RecorderError::noDisplay() : displays.first().id;
}

void CapturePipeline::startSystemAudio(const CaptureEvents& events)
{
    m_systemAudio = m_platform.audioServer->systemAudio();
    m_systemAudio->start({.onBuffer = [this](AudioBufferPtr sample) { m_buffer.appendAudio(std::move(sample)); },
                          .onWarning = events.onSystemAudioWarning});
}

void CapturePipeline::startMicrophone(const QString& id, const CaptureEvents& events)
{
    m_mic.onLevel = events.onMicLevel;
    m_mic.onWarning = [onMicWarning = events.onMicWarning](const std::optional<QString>& warning) {
        onMicWarning(warning ? std::optional(T("Mikrofon başlatılamadı: {0}", *warning)) : std::nullopt);
    };
    m_mic.start(id);
}

void CapturePipeline::startChatStream(const CaptureEvents& events)
{
    try {
        m_chatStream = m_platform.audioServer->voiceChat();
        m_chatStream->start({.onBuffer = [this](AudioBufferPtr sample) { m_buffer.appendChat(std::move(sample)); },
                             .onWarning = {},
                             .onApplications = events.onChatApps});
    } catch (const std::exception& error) {
        qWarning("voice chat: %s", error.what());
        stopChatStream();
    }
}

void CapturePipeline::stopChatStream() noexcept
{
    if (m_chatStream) {
        m_chatStream->stop();
        m_chatStream.reset();
    }
}

void CapturePipeline::stop() noexcept
{
    m_platform.frames->stop();
    if (m_systemAudio) {
        m_systemAudio->stop();
        m_systemAudio.reset();
    }
    // Runs after all posted tasks, so no frame is still on its way to the encoder.
    m_videoQueue.sync([this] {
        if (m_encoder) {
            m_encoder->finish();
            m_encoder.reset();
        }
        m_lastPicture.reset();
        // Cancels a pending repetition.
        ++m_pictures;
    });
    m_mic.stop();
    stopChatStream();
    m_buffer.reset();
}

} // namespace quelto
