// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/SerialQueue.h"
#include "capture/buffer/ReplayBuffer.h"
#include "capture/mic/MicCapture.h"
#include "capture/recorder/EncoderWatch.h"
#include "capture/settings/CaptureSettings.h"
#include "media/codec/VideoEncoder.h"
#include "platform/Platform.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

struct CaptureEvents {
    /// The screen is gone, or no encoder works any more; with a translated message.
    std::function<void(QString)> onStopped;
    std::function<void(float)> onMicLevel;
    /// After each start, and whenever it changes, the problem with an audio source; nothing if it works.
    std::function<void(std::optional<QString>)> onMicWarning;
    std::function<void(std::optional<QString>)> onSystemAudioWarning;
    /// The ids of the recorded voice chat applications, whenever they change. At the start there are none.
    std::function<void(QSet<QString>)> onChatApps;
};

/// The state of a session that has started.
struct CaptureReport {
    QSize outputSize;
    int bitsPerSecond = 0;
    int framesPerSecond = 0;
    VideoCodec codec = VideoCodec::h264;
};

/// The running parts of one capture session: screen to encoder to buffer, and audio sources to buffer.
///
/// Frames go from the frame source's thread to the queue "quelto.video", which owns the encoder. The frame source's
/// pool limits how many can wait: when the encoder falls behind, whole frames are skipped before any work is spent on
/// them. Audio goes from its source's thread directly into the buffer.
///
/// An encoder that outputs nothing for three seconds is replaced once, by one in software. The buffer then starts
/// again, because a clip cannot contain frames of two encoders.
///
/// Voice chat is a source of its own, whose failures are ignored: it never warns and never affects the session.
///
/// Thread: start and stop from one queue. Events come on the sources' threads, none after stop() has returned.
class CapturePipeline {
public:
    using OpenEncoder =
        std::function<std::unique_ptr<VideoEncoder>(const EncoderRequest&, VideoEncoder::OnEncodedFrame)>;

    CapturePipeline(Platform& platform, ReplayBuffer& buffer, OpenEncoder openEncoder);
    ~CapturePipeline();
    CapturePipeline(const CapturePipeline&) = delete;
    CapturePipeline& operator=(const CapturePipeline&) = delete;

    /// Empties the buffer and starts filling it. A problem with an audio source is an event. A request to stop ends a
    /// start that waits for the user. Errors: RecorderError, PlatformError; call stop() after an error too.
    CaptureReport start(const CaptureSettings& settings, const CaptureEvents& events, const std::stop_token& cancelled);
    /// Stops everything and empties the buffer. Never fails.
    void stop() noexcept;

private:
    std::unique_ptr<VideoEncoder> openEncoder(const EncoderRequest& request);
    void encode(VideoFramePtr frame);
    void replaceEncoder();
    void repeatIfStill(std::uint64_t picture);
    std::uint32_t chosenDisplay(std::uint32_t displayID) const;
    void startSystemAudio(const CaptureEvents& events);
    void startMicrophone(const QString& id, const CaptureEvents& events);
    void startChatStream(const CaptureEvents& events);
    void stopChatStream() noexcept;

    Platform& m_platform;
    ReplayBuffer& m_buffer;
    OpenEncoder m_openEncoder;
    MicCapture m_mic;
    std::unique_ptr<AudioSource> m_systemAudio;
    std::unique_ptr<AudioSource> m_chatStream;
    // Owned by the video queue, apart from the start.
    EncoderRequest m_encoderRequest;
    std::unique_ptr<VideoEncoder> m_encoder;
    EncoderWatch m_encoderWatch;
    std::function<void(QString)> m_onEncoderFailed;
    VideoFramePtr m_lastPicture;
    std::uint64_t m_pictures = 0;
    SerialQueue m_videoQueue;
};

} // namespace quelto
