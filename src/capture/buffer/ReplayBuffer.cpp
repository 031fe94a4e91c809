// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/buffer/ReplayBuffer.h"

namespace quelto {

namespace {

// Kept beyond the requested seconds, so that the clip's start is still in the buffer when the save begins.
constexpr double ExtraSeconds = 3.0;
// Audio reaches back further than video, whose head may lie up to a key-frame interval before the window's edge.
constexpr double ExtraAudioSeconds = 2.0;

} // namespace

void ReplayBuffer::configure(int seconds)
{
    const std::scoped_lock guard(m_lock);
    m_keepSeconds = seconds + ExtraSeconds;
}

double ReplayBuffer::keepSeconds() const
{
    const std::scoped_lock guard(m_lock);
    return m_keepSeconds;
}

void ReplayBuffer::reset()
{
    const std::scoped_lock guard(m_lock);
    m_video = {};
    m_audio = {};
    m_mic = {};
    m_chat = {};
}

void ReplayBuffer::appendVideo(EncodedFramePtr sample)
{
    const std::scoped_lock guard(m_lock);
    const auto cutoff = sample->presentationTime - fromSeconds(m_keepSeconds);
    m_video.append(std::move(sample));

    const auto& video = m_video.samples();
    qsizetype cut = 0;
    for (qsizetype i = 0; i < video.size() && video.at(i)->presentationTime <= cutoff; ++i) {
        if (video.at(i)->isKeyframe()) {
            cut = i;
        }
    }
    m_video.removeOldest(cut);
}

void ReplayBuffer::appendAudio(AudioBufferPtr sample)
{
    append(std::move(sample), m_audio);
}

void ReplayBuffer::appendMic(AudioBufferPtr sample)
{
    append(std::move(sample), m_mic);
}

void ReplayBuffer::appendChat(AudioBufferPtr sample)
{
    append(std::move(sample), m_chat);
}

void ReplayBuffer::append(AudioBufferPtr sample, AudioTrack& track)
{
    const std::scoped_lock guard(m_lock);
    const auto cutoff = sample->presentationTime - fromSeconds(m_keepSeconds + ExtraAudioSeconds);
    track.append(std::move(sample));

    const auto& samples = track.samples();
    const auto kept = std::find_if(samples.cbegin(), samples.cend(),
                                   [cutoff](const AudioBufferPtr& old) { return old->presentationTime >= cutoff; });
    track.removeOldest(kept - samples.cbegin());
}

ReplaySnapshot ReplayBuffer::snapshot()
{
    const std::scoped_lock guard(m_lock);
    return {
        .video = m_video.snapshot(), .audio = m_audio.snapshot(), .mic = m_mic.snapshot(), .chat = m_chat.snapshot()};
}

std::int64_t ReplayBuffer::approximateBytes() const
{
    const std::scoped_lock guard(m_lock);
    return m_video.bytes() + m_audio.bytes() + m_mic.bytes() + m_chat.bytes();
}

} // namespace quelto
