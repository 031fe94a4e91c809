// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/buffer/ReplayBuffer.h"

namespace quelto {

namespace {

// What the window keeps beyond the seconds asked for, so that a clip's wanted start is still inside when the save
// begins.
constexpr double ExtraSeconds = 3.0;
// Sound reaches further back than the picture, whose head may lie up to a key-frame interval before the window's edge.
constexpr double ExtraAudioSeconds = 2.0;

template <typename Samples> std::int64_t bytesOf(const Samples& samples)
{
    std::int64_t bytes = 0;
    for (const auto& sample : samples) {
        bytes += static_cast<std::int64_t>(sample->totalSize());
    }
    return bytes;
}

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
    m_tracks = {};
}

void ReplayBuffer::appendVideo(VideoSamplePtr sample)
{
    const std::scoped_lock guard(m_lock);
    const auto cutoff = sample->presentationTime - fromSeconds(m_keepSeconds);
    auto& video = m_tracks.video;
    video.append(std::move(sample));

    qsizetype cut = 0;
    for (qsizetype i = 0; i < video.size() && video.at(i)->presentationTime <= cutoff; ++i) {
        if (video.at(i)->isKeyframe()) {
            cut = i;
        }
    }
    if (cut >= 1) {
        video.remove(0, cut);
    }
}

void ReplayBuffer::appendAudio(AudioSamplePtr sample)
{
    const std::scoped_lock guard(m_lock);
    appendLocked(std::move(sample), m_tracks.audio);
}

void ReplayBuffer::appendMic(AudioSamplePtr sample)
{
    const std::scoped_lock guard(m_lock);
    appendLocked(std::move(sample), m_tracks.mic);
}

void ReplayBuffer::appendChat(AudioSamplePtr sample)
{
    const std::scoped_lock guard(m_lock);
    appendLocked(std::move(sample), m_tracks.chat);
}

void ReplayBuffer::appendLocked(AudioSamplePtr sample, AudioSamples& track) const
{
    const auto cutoff = sample->presentationTime - fromSeconds(m_keepSeconds + ExtraAudioSeconds);
    track.append(std::move(sample));

    const auto kept = std::find_if(track.cbegin(), track.cend(),
                                   [cutoff](const AudioSamplePtr& old) { return old->presentationTime >= cutoff; });
    if (const auto stale = kept - track.cbegin(); stale >= 1) {
        track.remove(0, stale);
    }
}

ReplaySnapshot ReplayBuffer::snapshot() const
{
    const std::scoped_lock guard(m_lock);
    return m_tracks;
}

std::int64_t ReplayBuffer::approximateBytes() const
{
    // Summed on a snapshot: the walk over tens of thousands of samples must not hold up a producer.
    const auto tracks = snapshot();
    return bytesOf(tracks.video) + bytesOf(tracks.audio) + bytesOf(tracks.mic) + bytesOf(tracks.chat);
}

} // namespace quelto
