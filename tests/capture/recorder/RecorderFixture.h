// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/clip/RecorderError.h"
#include "capture/recorder/Recorder.h"

#include "tests/base/tasks/ManualQueue.h"
#include "tests/capture/FakePlatform.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto::test {

/// A real recorder on fake desktop services and a manual clock.
class RecorderFixture : public testing::Test {
protected:
    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    FakePlatform fakes;
    ManualTime time;
    ManualQueue main{time};
    ManualQueue session{time};
    ManualQueue saves{time};
    FakeKeyFrames keyFrames = FakeKeyFrames::everyThirtieth;
    FakeDelay encoderDelay = FakeDelay::none;
    std::optional<int> encoderError;
    std::function<void()> whileOpeningEncoder;
    std::vector<EncoderRequest> encoders;
    FakeEncoderInput encoderInput;
    std::atomic<int>& encoded = encoderInput.frames;
    /// The clip writer's requests in order, and a hook that runs while it writes.
    std::vector<ClipRequest> written;
    std::function<void()> whileWriting;
    /// What the clip writer reports. Units: seconds.
    double clipDuration = 40;
    QList<SavedClip> savedClips;
    QStringList savedPaths;
    QStringList failures;
    QStringList failureReasons;
    std::unique_ptr<Recorder> recorder;

    void SetUp() override
    {
        recorder = std::make_unique<Recorder>(Recorder::Dependencies{
            .settings = settings,
            .platform = fakes.platform,
            .main = main,
            .session = session,
            .saves = saves,
            .openEncoder = [this](const EncoderRequest& request,
                                  VideoEncoder::OnEncodedFrame onEncodedFrame) -> std::unique_ptr<VideoEncoder> {
                if (encoderError) {
                    throw EncoderError(*encoderError);
                }
                encoders.push_back(request);
                if (whileOpeningEncoder) {
                    whileOpeningEncoder();
                }
                return std::make_unique<FakeEncoder>(std::move(onEncodedFrame), keyFrames, encoderDelay, encoderInput);
            },
            .clock = [this] { return time.now(); },
            .write =
                [this](const ClipRequest& request) {
                    written.push_back(request);
                    if (whileWriting) {
                        whileWriting();
                    }
                    if (std::ranges::none_of(request.snapshot.video,
                                             [](const auto& sample) { return sample->isKeyframe(); })) {
                        throw RecorderError::emptyBuffer();
                    }
                    return SavedClip{.path = folder.filePath(QStringLiteral("%1.mp4").arg(written.size())),
                                     .duration = clipDuration};
                }});
        QObject::connect(recorder.get(), &Recorder::clipSaved, recorder.get(), [this](const SavedClip& clip) {
            savedClips.append(clip);
            savedPaths.append(clip.path);
        });
        QObject::connect(recorder.get(), &Recorder::saveFailed, recorder.get(),
                         [this](const QString& message, const QString& reason) {
                             failures.append(message);
                             failureReasons.append(reason);
                         });
    }

    /// Sends one frame through the real video queue into the buffer.
    void showFrame()
    {
        const auto before = encoded.load();
        fakes.frames->emitFrame(time.now());
        encoded.wait(before);
    }

    void record()
    {
        recorder->start();
        time.settle();
        ASSERT_EQ(recorder->stateKind(), CaptureState::Recording);
        showFrame();
    }
};

} // namespace quelto::test
