// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/container/Mp4Writer.h"
#include "media/sound/AacEncoder.h"
#include "samples/AudioSample.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>

namespace quelto {

/// One sound track of a clip, encoded on a thread of its own while the file is already being written: encoding is what
/// a save costs, and the tracks do not depend on each other. Lets go of its thread in the midst of the work when it is
/// destroyed.
class SoundTrack final : public Mp4PacketSource {
public:
    /// Takes what the mixer gives: interleaved float stereo at 48,000 Hz.
    SoundTrack(AudioSamples pcm, int bitsPerSecond, Mp4TrackState state);

    /// The track as the writer wants it, with this object as its source.
    Mp4Sound asMp4Sound();

    /// Thread: one caller. Waits for the encoder. Errors: what the encoder threw.
    std::optional<AacPacket> next() override;

private:
    void encodeAll(const std::stop_token& stop);
    void encodeSound(const std::stop_token& stop);
    void encodeSilence();
    void hand(std::vector<AacPacket> packets);

    AudioSamples m_pcm;
    int m_bitsPerSecond;
    Mp4TrackState m_state;
    std::int64_t m_frames = 0;
    AacEncoder m_encoder;

    std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<AacPacket> m_ready;
    bool m_isFinished = false;
    std::exception_ptr m_failure;

    std::jthread m_thread;
};

} // namespace quelto
