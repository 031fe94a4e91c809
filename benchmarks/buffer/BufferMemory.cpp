// SPDX-License-Identifier: GPL-3.0-or-later
// Compares the memory of the replay buffer with the bytes of its samples. Fills the buffer like a recording of 1080p60
// with three audio tracks for four times its window, and prints both figures in bytes.
#include "capture/buffer/ReplayBuffer.h"

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <random>

namespace {

using namespace quelto;

constexpr int WindowSeconds = 90;
constexpr int RecordedSeconds = 4 * WindowSeconds;
constexpr int FramesPerSecond = 60;
constexpr int BitsPerSecond = 13'685'760;
// The size of a key frame relative to other frames.
constexpr int KeyFrameWeight = 5;
constexpr int AudioFrames = 1024;
constexpr int AudioRate = 48000;

std::int64_t residentBytes()
{
    std::int64_t total = 0;
    std::int64_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

/// Frame sizes vary like those of an encoder, which fragments the heap.
class VideoSource {
public:
    EncodedFramePtr next(HostTime time, bool isKey)
    {
        constexpr double Mean = BitsPerSecond / 8.0 / (FramesPerSecond - 1 + KeyFrameWeight);
        auto sample = std::make_shared<EncodedFrame>();
        sample->presentationTime = time;
        sample->isNotSync = !isKey;
        sample->data.assign(static_cast<std::size_t>(Mean * (isKey ? KeyFrameWeight : 1) * m_size(m_random)),
                            std::byte{1});
        return sample;
    }

private:
    std::mt19937 m_random{7};
    std::lognormal_distribution<double> m_size{-0.08, 0.4};
};

AudioBufferPtr audioBuffer(HostTime time)
{
    auto sample = std::make_shared<AudioBuffer>();
    sample->presentationTime = time;
    sample->frames = AudioFrames;
    sample->data.assign(static_cast<std::size_t>(AudioFrames) * 2 * sizeof(float), std::byte{1});
    return sample;
}

void record(ReplayBuffer& buffer)
{
    VideoSource video;
    std::int64_t audioFrames = 0;
    for (int frame = 0; frame < RecordedSeconds * FramesPerSecond; ++frame) {
        const HostTime time{fromSeconds(static_cast<double>(frame) / FramesPerSecond)};
        buffer.appendVideo(video.next(time, frame % FramesPerSecond == 0));
        for (; audioFrames * FramesPerSecond <= static_cast<std::int64_t>(frame) * AudioRate;
             audioFrames += AudioFrames) {
            const HostTime audioTime{fromSeconds(static_cast<double>(audioFrames) / AudioRate)};
            buffer.appendAudio(audioBuffer(audioTime));
            buffer.appendMic(audioBuffer(audioTime));
            buffer.appendChat(audioBuffer(audioTime));
        }
    }
}

} // namespace

int main()
{
    ReplayBuffer buffer;
    buffer.configure(WindowSeconds);
    const std::int64_t before = residentBytes();
    record(buffer);
    const std::int64_t taken = residentBytes() - before;
    std::printf("%lld %lld\n", static_cast<long long>(taken), static_cast<long long>(buffer.approximateBytes()));
}
