// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/SerialQueue.h"
#include "capture/buffer/ReplayBuffer.h"
#include "capture/mic/MicCapture.h"
#include "media/codec/VideoEncoder.h"
#include "platform/Platform.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

/// What a capture session is built from, taken out of the settings when it begins.
struct CaptureRequest {
    /// 0 for the main display.
    std::uint32_t displayID = 0;
    std::optional<int> targetHeight;
    int framesPerSecond = 60;
    VideoCodec codec = VideoCodec::h264;
    /// Units: bits per second for pictures of that size.
    std::function<int(QSize)> bitrate;
    bool capturesAudio = true;
    bool showsCursor = true;
    bool capturesMicrophone = true;
    QString microphoneID;
};

struct CaptureEvents {
    /// The screen went away, with a translated sentence.
    std::function<void(QString)> onStopped;
    std::function<void(float)> onMicLevel;
    /// What is wrong with a sound source that was running, or nothing once it runs again.
    std::function<void(std::optional<QString>)> onMicWarning;
    std::function<void(std::optional<QString>)> onSystemAudioWarning;
};

/// How the session came up.
struct CaptureReport {
    QSize outputSize;
    int bitsPerSecond = 0;
    int framesPerSecond = 0;
    VideoCodec codec = VideoCodec::h264;
    bool isMicActive = false;
    std::optional<QString> micWarning;
};

/// The running parts of one capture session: screen to encoder to buffer, and the sound sources to the buffer.
///
/// Pictures travel from the frame source's thread to the queue "quelto.video", which alone touches the encoder. The
/// frame source's pool bounds what can wait there: when the encoder falls behind, whole pictures are left out before
/// any work goes into them. Sound goes straight from its source's thread into the buffer.
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

    /// Empties the buffer and begins to fill it. A microphone that fails is a warning in the report.
    /// Errors: RecorderError, PlatformError; call stop() after one as well.
    CaptureReport start(const CaptureRequest& request, int bufferSeconds, const CaptureEvents& events);
    /// Ends everything and empties the buffer. Never fails.
    void stop() noexcept;

private:
    void encode(VideoFramePtr frame);
    void repeatIfStill(std::uint64_t picture);
    DisplayInfo chosenDisplay(std::uint32_t displayID) const;
    void startSystemAudio(const CaptureEvents& events);
    void startMicrophone(const CaptureRequest& request, const CaptureEvents& events, CaptureReport& report);

    Platform& m_platform;
    ReplayBuffer& m_buffer;
    OpenEncoder m_openEncoder;
    MicCapture m_mic;
    std::unique_ptr<AudioSource> m_systemAudio;
    // What follows belongs to the video queue.
    std::unique_ptr<VideoEncoder> m_encoder;
    VideoFramePtr m_lastPicture;
    std::uint64_t m_pictures = 0;
    SerialQueue m_videoQueue;
};

} // namespace quelto
